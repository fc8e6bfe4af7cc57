#pragma once

#include "platform/net/UrlRequest.h"

#include <QByteArrayView>

namespace orvel {

// Gathers the head of a transfer's last answer from the header lines of all its answers: those of interim
// answers (1xx) and of redirects are dropped.
class HeadReader
{
public:
    // Takes a line with its line end; an empty one ends an answer's head. Returns false when the lines are
    // over their bounds (256 KiB in all, 1,000 fields an answer).
    bool addLine(QByteArrayView line);
    // Call at the first byte of body or at a good end: what has been read is final then. After a redirect
    // such a body belongs to a bare answer, which has no head.
    void bodyBegins();
    // Returns true once the head can't change any more.
    bool isFinal() const { return m_final; }
    const UrlResponse &response() const { return m_response; }

private:
    bool addField(QByteArrayView line);
    bool isRedirect() const;

    UrlResponse m_response;
    qsizetype m_bytes = 0;
    QString m_lastName;
    bool m_inHead = false;
    bool m_final = false;
};

} // namespace orvel
