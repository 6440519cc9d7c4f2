#include "Ansi.h"

#include <array>

namespace uninfesim {

namespace {

// 0x80..0x9F: the only range where Windows-1252 departs from Latin-1 (0 = undefined byte).
constexpr std::array<char16_t, 32> kFaixa80 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

char CodigoAnsi(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (std::size_t i = 0; i < kFaixa80.size(); ++i)
        if (kFaixa80[i] != 0 && kFaixa80[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}

} // namespace

QString DeAnsi(const QByteArray& bytes) {
    QString texto;
    texto.reserve(bytes.size());
    for (char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        const char16_t especial = (u >= 0x80 && u < 0xA0) ? kFaixa80[u - 0x80] : 0;
        texto.append(QChar(especial != 0 ? especial : char16_t(u)));
    }
    return texto;
}

QByteArray ParaAnsi(const QString& texto) {
    QByteArray bytes;
    bytes.reserve(texto.size());
    for (QChar c : texto)
        bytes.append(CodigoAnsi(c.unicode()));
    return bytes;
}

} // namespace uninfesim
