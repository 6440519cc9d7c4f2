#include "emission/RespostaUniNfe.h"

#include "context/Servidor.h"
#include "storage/Pastas.h"

#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

bool RespostaPresente(Servidor& s, const QString& caminho, qint64 limite) {
    if (!ArquivoExiste(caminho)) return false;
    if (!GrandeDemais(caminho, limite)) return true;
    s.RegistraUmaVez(u"Resposta do UniNFe danificada, maior que %1 bytes, não lida: %2"_s.arg(
        QString::number(limite), QDir::toNativeSeparators(caminho)));
    return false;
}

QByteArray RespostaLida(Servidor& s, const QString& caminho) {
    return RespostaPresente(s, caminho) ? ConteudoDoArquivo(caminho) : QByteArray();
}

void AnotaChaveRecusada(Servidor& s, const QString& onde, const QString& arquivo,
                        const QString& lida) {
    s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + ChaveInvalida + u"'"_s + onde);
    // Printable and short: the text is someone else's.
    QString mostrada = lida.left(60);
    for (QChar& c : mostrada)
        if (!c.isPrint()) c = u'?';
    s.RegistraUmaVez(
        u"NFC-e %1: %2 em %3: \"%4\""_s.arg(QString::number(s.venda.NumNfce), ChaveInvalida,
                                            QDir::toNativeSeparators(arquivo), mostrada));
}

void RecusaChave(Servidor& s, const QString& onde, const QString& arquivo, const QString& lida) {
    AnotaChaveRecusada(s, onde, arquivo, lida);
    throw ErroExecucao(ErroTipoIncompativel, ChaveInvalida);
}

} // namespace nfce
