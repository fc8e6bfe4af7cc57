#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace orvel {

// One failure of the codec, with the one that came before it in the same call.
struct JsonError
{
    enum Code {
        Unsupported = 1,
        BadNumber = 2,
        BadSyntax = 3,
        NoContainer = 4,
        ControlCharacter = 5,
        BadUnicodeEscape = 6,
        TooDeep = 7,
        BadEscape = 8,
        TrailingComma = 9,
        TrailingGarbage = 10,
        EndOfInput = 11,
        NoInput = 12
    };
    static inline const QString domain = QStringLiteral("com.orvel.json.ErrorDomain");

    int code = 0;
    QString localizedDescription{};
    std::shared_ptr<const JsonError> underlying{};

    JsonError() = default;
    JsonError(int errorCode, const QString &description, std::shared_ptr<const JsonError> previous);
    JsonError(const JsonError &) = default;
    JsonError &operator=(const JsonError &) = default;
    // Frees a chain of any length without recursion.
    ~JsonError();

    // For the log: the domain, the code and the description.
    QString text() const;
};

// The errors of one call, the first one first.
using JsonErrorTrace = std::vector<std::shared_ptr<const JsonError>>;

// The "%@" text of a trace: its errors, one a line, in parentheses.
QString formatTrace(const JsonErrorTrace &trace);

} // namespace orvel
