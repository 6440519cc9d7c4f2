#pragma once

#include <QtGlobal>
#include <compare>

namespace nfce {

// Run-time error raised when an amount does not fit the currency range.

// Money: a signed 64-bit count of ten-thousandths (four decimals), so sums of
// cents never drift the way binary doubles do. Range about ±922 337 203 685 477.
class Moeda {
public:
    static constexpr qint64 Escala = 10000;

    constexpr Moeda() = default;
    // Rounded to four decimals, half away from zero on the value's shortest decimal
    // form; a value out of range (or not a number) raises error 6.
    explicit Moeda(double valor);

    static constexpr Moeda deUnidades(qint64 unidades) {
        Moeda m;
        m.unidades_ = unidades;
        return m;
    }

    constexpr qint64 unidades() const { return unidades_; }
    double paraDouble() const { return static_cast<double>(unidades_) / Escala; }

    // Sums and differences that leave the range raise error 6.
    Moeda operator+(Moeda outra) const;
    Moeda operator-(Moeda outra) const;
    Moeda operator-() const;
    Moeda& operator+=(Moeda outra) { return *this = *this + outra; }
    Moeda& operator-=(Moeda outra) { return *this = *this - outra; }

    friend constexpr bool operator==(Moeda, Moeda) = default;
    friend constexpr std::strong_ordering operator<=>(Moeda, Moeda) = default;

private:
    qint64 unidades_ = 0;
};

} // namespace nfce
