#include "storage/Moeda.h"

#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace nfce {

namespace {

[[noreturn]] void estouro() {
    throw ErroExecucao(ErroEstouro, u"Estouro de capacidade"_s);
}

constexpr qint64 Maximo = std::numeric_limits<qint64>::max();
constexpr qint64 Minimo = std::numeric_limits<qint64>::min();

qint64 somaVerificada(qint64 a, qint64 b) {
    if ((b > 0 && a > Maximo - b) || (b < 0 && a < Minimo - b)) estouro();
    return a + b;
}

qint64 diferencaVerificada(qint64 a, qint64 b) {
    if ((b < 0 && a > Maximo + b) || (b > 0 && a < Minimo + b)) estouro();
    return a - b;
}

} // namespace

Moeda::Moeda(double valor) {
    // The rounded decimal text read back as an integer count: exact, and a value
    // that does not fit (or inf/nan, whose text has no digits) fails the reading.
    bool ok = false;
    unidades_ = TextoDecimal(valor, 4).remove(u'.').toLongLong(&ok);
    if (!ok) estouro();
}

Moeda Moeda::operator+(Moeda outra) const {
    return deUnidades(somaVerificada(unidades_, outra.unidades_));
}

Moeda Moeda::operator-(Moeda outra) const {
    return deUnidades(diferencaVerificada(unidades_, outra.unidades_));
}

Moeda Moeda::operator-() const {
    return Moeda() - *this;
}

} // namespace nfce
