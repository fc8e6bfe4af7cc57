#include "FuzzSupport.h"
#include "platform/html/HtmlReader.h"
#include "platform/html/HtmlText.h"

using namespace orvel;
using fuzz::require;

namespace {

class Checker final : public HtmlHandler
{
public:
    ~Checker() override { require(m_open.isEmpty(), "all that was started has been ended"); }

private:
    void startElement(const QByteArray &name, const HtmlAttributes &) override
    {
        m_open.append(name);
        require(m_open.size() <= maxHtmlDepth, "nesting is bounded");
    }
    void endElement(const QByteArray &name) override
    {
        require(!m_open.isEmpty() && m_open.takeLast() == name, "the innermost element ends first");
    }
    void characters(const QString &text) override
    {
        require(text.isValidUtf16(), "text is whole characters");
    }

    QByteArrayList m_open;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString html = QString::fromUtf8(fuzz::viewOf(data, size));
    Checker checker;
    readHtml(html, checker);
    const QString text = plainTextOfHtml(html) + u'.'; // a line end at the end is none
    require(plainTextOfHtml(htmlOfPlainText(text)) == text, "a text reads as itself");
    return 0;
}
