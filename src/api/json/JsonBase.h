#pragma once

#include "api/json/JsonError.h"

#include <functional>

namespace orvel {

// What reader and writer share: the limit of nesting and the trace of errors.
class JsonBase
{
public:
    static constexpr unsigned defaultMaxDepth = 512;

    // Empty unless the last call failed; its last error carries the whole chain.
    const JsonErrorTrace &errorTrace() const { return m_errorTrace; }
    void addErrorWithCode(int code, const QString &description);
    void clearErrorTrace();
    // Called after each change of the trace.
    void observeErrorTrace(std::function<void()> observer) { m_observer = std::move(observer); }

    // The number of arrays and objects that may be open at once. 0: no limit.
    unsigned maxDepth() const { return m_maxDepth; }
    void setMaxDepth(unsigned maxDepth) { m_maxDepth = maxDepth; }
    // Returns whether one more may be opened inside `depth` open ones. Adds the error when not.
    bool mayOpen(size_t depth);

protected:
    JsonBase() = default;
    ~JsonBase();
    JsonBase(const JsonBase &) = delete;
    JsonBase &operator=(const JsonBase &) = delete;

    // Takes over the trace of a reader or writer that failed.
    void copyErrorTrace(const JsonBase &other);

private:
    JsonErrorTrace m_errorTrace;
    std::function<void()> m_observer;
    unsigned m_maxDepth = defaultMaxDepth;
};

} // namespace orvel
