#include "storage/Configuracao.h"

#include "storage/ArquivoTexto.h"
#include "storage/ErroExecucao.h"
#include "storage/Pastas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <algorithm>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// Each stored byte is the plain one shifted by this much plus its position (from 1).
constexpr int kDeslocamento = 79;

[[noreturn]] void ArgumentoInvalido(const QString& detalhe) {
    throw ErroExecucao(ErroArgumentoInvalido,
                       u"Chamada de procedimento ou argumento inválido: "_s + detalhe);
}

// Where the line that starts at `inicio` ends: at its CR or LF, or at the end of the data.
qsizetype FimDaLinha(QByteArrayView dados, qsizetype inicio) {
    const auto fim = std::find_if(dados.begin() + inicio, dados.end(),
                                  [](char c) { return c == '\r' || c == '\n'; });
    return fim - dados.begin();
}

// Start of the next line, past the CR LF, CR or LF at `fim`.
qsizetype InicioDaProxima(QByteArrayView dados, qsizetype fim) {
    const bool crLf = fim + 1 < dados.size() && dados[fim] == '\r' && dados[fim + 1] == '\n';
    return fim + (crLf ? 2 : 1);
}

// The plain bytes of a stored line of the company record, into `claro`.
void Desembaralha(QByteArrayView linha, QByteArray& claro) {
    claro.resize(linha.size());
    for (qsizetype i = 0; i < linha.size(); ++i) {
        const qsizetype codigo = static_cast<uchar>(linha[i]) - kDeslocamento - (i + 1);
        if (codigo < 0) ArgumentoInvalido(u"o caractere %1 da linha não se decifra"_s.arg(i + 1));
        claro[i] = static_cast<char>(codigo);
    }
}

// The line begins with the key (in capitals), letter case aside. Windows-1252 has one character
// a byte and no letter whose capital is ASCII, so an ASCII start is compared on the bytes.
bool ComecaCom(QByteArrayView linha, const QString& alvo) {
    const QByteArrayView inicio = linha.first(std::min(alvo.size(), linha.size()));
    if (std::any_of(inicio.begin(), inicio.end(), [](char c) { return c & 0x80; }))
        return TextoAnsi(inicio).toUpper() == alvo;
    if (inicio.size() != alvo.size()) return false;
    for (qsizetype i = 0; i < inicio.size(); ++i)
        if (QChar::toUpper(static_cast<char32_t>(inicio[i])) != alvo[i].unicode()) return false;
    return true;
}

// Calls `usa` with the bytes of each line (unscrambled for the company record) until it
// returns true; a line that does not unscramble raises error 5 naming `origem` and the line.
// Only the bytes are handed on: most lines are looked at for their first few letters only.
template <typename Usa>
void ParaCadaLinha(QByteArrayView dados, Cifra cifra, const QString& origem, Usa usa) {
    QByteArray claro;
    qsizetype inicio = 0;
    for (int numero = 1; inicio < dados.size(); ++numero) {
        const qsizetype fim = FimDaLinha(dados, inicio);
        QByteArrayView linha = dados.sliced(inicio, fim - inicio);
        try {
            if (cifra == Cifra::Empresa) {
                Desembaralha(linha, claro);
                linha = claro;
            }
        } catch (const ErroExecucao& erro) {
            throw ErroExecucao(erro.numero(), u"%1 (%2, linha %3)"_s.arg(erro.descricao(), origem,
                                                                         QString::number(numero)));
        }
        if (usa(linha)) return;
        inicio = InicioDaProxima(dados, fim);
    }
}

QString Procura(const QString& caminho, const QString& chave, Cifra cifra) {
    return ValorDaChave(BytesDoAjuste(caminho), chave, cifra, QDir::toNativeSeparators(caminho));
}

} // namespace

QByteArray BytesDoAjuste(const QString& caminho) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) {
        const QString nome = QDir::toNativeSeparators(caminho);
        if (!QFileInfo::exists(caminho))
            throw ErroExecucao(ErroArquivoNaoEncontrado, u"Arquivo não encontrado: "_s + nome);
        throw ErroExecucao(ErroAcessoCaminho, u"Erro de acesso ao caminho/arquivo: %1 (%2)"_s.arg(
                                                  nome, arquivo.errorString()));
    }
    return arquivo.readAll();
}

QString ValorDaChave(QByteArrayView dados, const QString& chave, Cifra cifra,
                     const QString& origem) {
    const QString alvo = chave.toUpper();
    QString valor;
    ParaCadaLinha(dados, cifra, origem, [&](QByteArrayView linha) {
        if (!ComecaCom(linha, alvo)) return false;
        valor = Apara(TextoAnsi(linha).mid(alvo.size() + 1));
        return true;
    });
    return valor;
}

QStringList LinhasDoRegistro(QByteArrayView dados, const QString& origem) {
    QStringList linhas;
    ParaCadaLinha(dados, Cifra::Empresa, origem, [&](QByteArrayView linha) {
        if (!linha.isEmpty()) linhas.append(TextoAnsi(linha));
        return false;
    });
    return linhas;
}

QString LerConfig(const QString& pastaPrograma, const QString& chave) {
    return Procura(Caminho(pastaPrograma, u"Config.ini"_s), chave, Cifra::Nenhuma);
}

QString LerEmpresa(const QString& pastaPrograma, const QString& chave) {
    return Procura(Caminho(pastaPrograma, u"Empresa.Bin"_s), chave, Cifra::Empresa);
}

QString DecifraLinha(const QByteArray& linha) {
    QByteArray claro;
    Desembaralha(linha, claro);
    return TextoAnsi(claro);
}

QByteArray CifraLinha(const QString& texto) {
    QStringEncoder ansi("windows-1252");
    QByteArray bytes = ansi(texto);
    if (ansi.hasError())
        ArgumentoInvalido(u"\"%1\" tem caractere fora do Windows-1252"_s.arg(texto));
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const qsizetype codigo = static_cast<uchar>(bytes[i]) + kDeslocamento + (i + 1);
        if (codigo > 255)
            ArgumentoInvalido(u"o caractere %1 de \"%2\" não cabe no registro"_s.arg(
                QString::number(i + 1), texto));
        bytes[i] = static_cast<char>(codigo);
    }
    return bytes;
}

QString Apara(const QString& texto) {
    qsizetype inicio = 0;
    qsizetype fim = texto.size();
    while (inicio < fim && texto.at(inicio) == u' ')
        ++inicio;
    while (fim > inicio && texto.at(fim - 1) == u' ')
        --fim;
    return texto.sliced(inicio, fim - inicio);
}

bool Vazio(const QString& texto) {
    return Apara(texto).isEmpty();
}

} // namespace nfce
