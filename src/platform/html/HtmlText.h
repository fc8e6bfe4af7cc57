#pragma once

#include <QString>

namespace orvel {

// Returns the text that a reader of `html` sees, within the bounds of readHtml(). Blocks, table cells and
// line breaks are lines. Any thread.
QString plainTextOfHtml(const QString &html);

// Returns HTML that shows `text` as it is, spaces and lines too. plainTextOfHtml() reads `text` in it again.
QString htmlOfPlainText(const QString &text);

} // namespace orvel
