#pragma once

#include <QByteArrayView>
#include <QtEndian>
#include <algorithm>
#include <bit>
#include <concepts>

namespace orvel {

// Reads numbers off the front of some bytes. Beyond their end it reads zeros.
class ByteReader
{
public:
    explicit ByteReader(QByteArrayView bytes, std::endian order = std::endian::big)
        : m_rest(bytes), m_order(order)
    {
    }

    quint8 u8() { return number<quint8>(); }
    quint16 u16() { return number<quint16>(); }
    quint32 u32() { return number<quint32>(); }
    quint64 u64() { return number<quint64>(); }
    // Four bytes in their order, as fourCharacterCode() names them.
    quint32 code()
    {
        const quint32 value = u32();
        return m_order == std::endian::big ? value : qbswap(value);
    }

    // Returns at most this many bytes, fewer at the end.
    QByteArrayView take(quint64 count)
    {
        const auto size = qsizetype(std::min(count, quint64(m_rest.size())));
        const QByteArrayView taken = m_rest.first(size);
        m_rest = m_rest.sliced(size);
        return taken;
    }
    void skip(quint64 count) { take(count); }
    QByteArrayView rest() const { return m_rest; }

private:
    template<std::unsigned_integral Number>
    Number number()
    {
        const QByteArrayView bytes = take(sizeof(Number));
        quint64 value = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            const std::size_t at = m_order == std::endian::big ? i : sizeof(Number) - 1 - i;
            const auto byte = qsizetype(at) < bytes.size() ? quint8(bytes[qsizetype(at)]) : quint8(0);
            value = value << 8 | byte;
        }
        return Number(value);
    }

    QByteArrayView m_rest;
    std::endian m_order;
};

} // namespace orvel
