#include "tools/stream/Output.h"

#include "api/json/JsonText.h"

#include <cmath>
#include <cstdio>

namespace orvel {

namespace {

constexpr int valueColumn = 20;

// What a server sends must neither break a line nor command the terminal.
QString printable(QString text)
{
    for (QChar &character : text) {
        const QChar::Category category = character.category();
        const QChar::Direction direction = character.direction();
        const bool turnsText = (direction >= QChar::DirRLE && direction <= QChar::DirPDF) ||
                               direction == QChar::DirLRE || direction == QChar::DirLRO ||
                               (direction >= QChar::DirLRI && direction <= QChar::DirPDI);
        if (turnsText || category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = QChar::ReplacementCharacter;
    }
    return text;
}

JsonValue objectOf(const Output::Fields &fields)
{
    JsonValue object = JsonValue::emptyObject();
    for (const auto &[key, value] : fields)
        object.set(key, value);
    return object;
}

} // namespace

JsonValue Output::seconds(double seconds)
{
    const QByteArray count = QByteArray::number(std::llround(seconds * 1000));
    return Decimal::fromParts(false, count, {}, -3).value_or(Decimal());
}

void Output::event(double seconds, const QString &name, const Fields &fields)
{
    if (m_json) {
        Fields all{{QStringLiteral("event"), name}, {QStringLiteral("time"), Output::seconds(seconds)}};
        all.insert(all.end(), fields.begin(), fields.end());
        write(JSONRepresentation(objectOf(all)));
        return;
    }
    QStringList values;
    for (const auto &[key, value] : fields)
        if (!value.isAbsent())
            values << printable(value.text());
    QString line = QStringLiteral("%1  %2").arg(seconds, 9, 'f', 3).arg(name);
    if (!values.isEmpty())
        line = line.leftJustified(valueColumn) + values.join(QStringLiteral(" | "));
    write(line);
}

void Output::results(const Fields &fields)
{
    if (m_json) {
        write(JSONRepresentation(objectOf(fields)));
        return;
    }
    for (const auto &[key, value] : fields)
        if (!value.isAbsent())
            write(QStringLiteral("%1 %2").arg(key + u':', -14).arg(printable(value.text())));
}

void Output::result(const QString &key, const QString &value)
{
    write(m_json ? JSONRepresentation(objectOf({{key, value}})) : value);
}

void Output::complain(const QString &sentence)
{
    const QByteArray text = printable(sentence).toUtf8();
    std::fprintf(stderr, "orvel-stream: %s\n", text.constData());
}

void Output::write(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) != size_t(bytes.size()) ||
        std::fflush(stdout) != 0)
        m_failed = true;
}

} // namespace orvel
