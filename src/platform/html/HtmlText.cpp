#include "platform/html/HtmlText.h"

#include "platform/html/HtmlReader.h"

#include <QList>
#include <QSet>
#include <utility>

namespace orvel {

namespace {

bool isBlock(const QByteArray &name)
{
    static const QSet<QByteArray> blocks{
        "address", "article", "aside", "blockquote", "body",     "caption", "center",     "dd",     "details",
        "dir",     "div",     "dl",    "dt",         "fieldset", "figure",  "figcaption", "footer", "form",
        "h1",      "h2",      "h3",    "h4",         "h5",       "h6",      "header",     "hr",     "html",
        "legend",  "li",      "main",  "menu",       "nav",      "ol",      "p",          "pre",    "section",
        "summary", "table",   "td",    "th",         "tr",       "ul"};
    return blocks.contains(name);
}

bool isSpace(QChar character)
{
    return character == u' ' || character == u'\n' || character == u'\t' || character == u'\r';
}

bool keepsSpaces(const QByteArray &name, const HtmlAttributes &attributes)
{
    return name == "pre" || attributes.value("style").remove(u' ').contains(u"white-space:pre");
}

class PlainText final : public HtmlHandler
{
public:
    // A line break at the end begins no line.
    QString text() const
    {
        const QStringList lines = m_line.isEmpty() ? m_lines : m_lines + QStringList{m_line};
        return lines.join(u'\n');
    }

private:
    void startElement(const QByteArray &name, const HtmlAttributes &attributes) override
    {
        m_hidden += name == "title";
        m_keepsSpaces.append((!m_keepsSpaces.isEmpty() && m_keepsSpaces.last()) ||
                             keepsSpaces(name, attributes));
        if (isBlock(name))
            endBlock();
        if (name == "br" || name == "hr")
            endLine();
        m_dropsNewline = name == "pre";
    }
    void endElement(const QByteArray &name) override
    {
        m_hidden -= name == "title";
        m_keepsSpaces.removeLast();
        if (isBlock(name))
            endBlock();
    }
    void characters(const QString &text) override
    {
        if (m_hidden > 0)
            return;
        const bool keepsSpaces = !m_keepsSpaces.isEmpty() && m_keepsSpaces.last();
        for (const QChar character : text) {
            const bool isDropped = std::exchange(m_dropsNewline, false) && character == u'\n';
            if (!keepsSpaces && isSpace(character))
                m_spaceBefore = !m_line.isEmpty();
            else if (character == u'\n' && !isDropped)
                endLine();
            else if (!isDropped)
                append(character == QChar::Nbsp ? u' ' : character);
        }
    }

    void append(QChar character)
    {
        if (std::exchange(m_spaceBefore, false))
            m_line += u' ';
        m_line += character;
    }
    void endLine()
    {
        m_spaceBefore = false;
        m_lines.append(std::exchange(m_line, {}));
    }
    void endBlock()
    {
        if (!m_line.isEmpty())
            endLine();
    }

    QStringList m_lines;
    QString m_line;
    QList<bool> m_keepsSpaces; // by open element
    int m_hidden = 0;
    bool m_spaceBefore = false;
    bool m_dropsNewline = false; // right behind "<pre>"
};

} // namespace

QString plainTextOfHtml(const QString &html)
{
    PlainText text;
    readHtml(html, text);
    return text.text();
}

QString htmlOfPlainText(const QString &text)
{
    return QStringLiteral("<div style=\"white-space: pre-wrap\">") + text.toHtmlEscaped() +
           QStringLiteral("</div>");
}

} // namespace orvel
