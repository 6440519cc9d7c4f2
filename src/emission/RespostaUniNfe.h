#pragma once

#include "storage/ArquivoTexto.h"

#include <QString>

namespace nfce {

struct Servidor;

// UniNFe's answer file is there to be read: it exists and is no larger than `limite`. A larger
// one is damaged and counts as not there yet (a log line the first time).
bool RespostaPresente(Servidor& s, const QString& caminho, qint64 limite = LimiteResposta);
// Its bytes when it is there to be read; none otherwise.
QByteArray RespostaLida(Servidor& s, const QString& caminho);

// A key an answer carried that is not the sale's: it is never used as a file name or stored.
// The sale (`onde`: its WHERE clause) gets the reason in erro and stays pending; the log gets
// the file and what it held, the first time.
inline const QString ChaveInvalida = QStringLiteral("chave inválida recebida do UniNFe");
void AnotaChaveRecusada(Servidor& s, const QString& onde, const QString& arquivo,
                        const QString& lida);
// The same, for the key the sale is sent under: nothing more is done for the sale in this pass
// (raises ErroTipoIncompativel, which the sender records on the sale and goes on).
[[noreturn]] void RecusaChave(Servidor& s, const QString& onde, const QString& arquivo,
                              const QString& lida);

} // namespace nfce
