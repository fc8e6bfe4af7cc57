#pragma once

#include <curl/curl.h>

namespace orvel {

// Sets options of one handle and remembers the first refusal: a transfer without one of its bounds must not
// begin.
class CurlOptions
{
public:
    explicit CurlOptions(CURL *easy) : m_easy(easy) {}

    template<class Value>
    void set(CURLoption option, Value value)
    {
        note(curl_easy_setopt(m_easy, option, value));
    }
    // For what else may fail during the setup.
    void note(CURLcode result)
    {
        if (m_result == CURLE_OK)
            m_result = result;
    }
    CURLcode result() const { return m_result; }

private:
    CURL *const m_easy;
    CURLcode m_result = CURLE_OK;
};

} // namespace orvel
