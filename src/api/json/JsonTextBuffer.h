#pragma once

#include <QString>
#include <algorithm>

namespace orvel {

// A text that grows at its end.
class JsonTextBuffer
{
public:
    explicit JsonTextBuffer(qsizetype capacity) : m_text(capacity, Qt::Uninitialized), m_begin(m_text.data())
    {
    }

    qsizetype size() const { return m_size; }
    void append(char16_t unit) { *room(1) = unit; }
    void append(QStringView text) { std::copy_n(text.begin(), text.size(), room(text.size())); }
    void appendLatin1(const char *text, qsizetype size)
    {
        std::transform(text, text + size, room(size), [](char c) { return QLatin1Char(c); });
    }
    void fill(char16_t unit, qsizetype count) { std::fill_n(room(count), count, QChar(unit)); }

    // The text; the buffer is spent.
    QString take()
    {
        m_text.truncate(m_size);
        return std::move(m_text);
    }

private:
    QChar *room(qsizetype count)
    {
        if (m_text.size() - m_size < count)
            grow(count);
        m_size += count;
        return m_begin + (m_size - count);
    }
    void grow(qsizetype count)
    {
        m_text.resize(std::max(m_text.size() * 2, m_size + count));
        m_begin = m_text.data();
    }

    QString m_text;
    QChar *m_begin;
    qsizetype m_size = 0;
};

} // namespace orvel
