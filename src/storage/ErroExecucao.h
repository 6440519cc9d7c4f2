#pragma once

#include <QString>
#include <exception>

namespace nfce {

// Run-time error numbers the handlers decide by: the error traps leave silently for some
// of them and show the others, so the numbers are fixed.
enum NumeroErro : int {
    ErroArgumentoInvalido = 5,
    ErroEstouro = 6,
    ErroDivisaoPorZero = 11,
    ErroTipoIncompativel = 13,
    ErroArquivoNaoEncontrado = 53,
    ErroArquivoJaExiste = 58,
    ErroDiscoCheio = 61,
    ErroAcessoCaminho = 75,
    ErroCaminhoNaoEncontrado = 76,
    ErroObjetoNaoDefinido = 91,
    ErroSemRegistroAtual = 3021,
    ErroItemNaoEncontrado = 3265,
    ErroObjetoFechado = 3704,
    ErroProvedor = -2147467259,
};

// The one exception type that crosses module boundaries.
class ErroExecucao : public std::exception {
public:
    ErroExecucao(int numero, QString descricao)
        : numero_(numero), descricao_(std::move(descricao)), utf8_(descricao_.toUtf8()) {}

    int numero() const { return numero_; }
    const QString& descricao() const { return descricao_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    int numero_;
    QString descricao_;
    QByteArray utf8_;
};

// A sale whose own data no document can carry (no items, a quantity that is not a number, a
// row without a date): nothing is written for it, and the sender records the description on
// that sale and takes it out of the queue until someone corrects it.
class ErroDaVenda : public ErroExecucao {
public:
    ErroDaVenda(int numero, QString descricao) : ErroExecucao(numero, std::move(descricao)) {}
};

} // namespace nfce
