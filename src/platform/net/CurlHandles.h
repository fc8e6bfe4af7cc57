#pragma once

#include <curl/curl.h>
#include <memory>

namespace orvel {

// Owners of curl's handles.
struct CurlCleanup
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
struct CurlEasyCleanup
{
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
};
struct CurlMultiCleanup
{
    void operator()(CURLM *handle) const { curl_multi_cleanup(handle); }
};
using CurlList = std::unique_ptr<curl_slist, CurlCleanup>;
using CurlEasy = std::unique_ptr<CURL, CurlEasyCleanup>;
using CurlMulti = std::unique_ptr<CURLM, CurlMultiCleanup>;

} // namespace orvel
