// The settings file "Config.ini", key by key, as LerConfig reads it.
#include "storage/Configuracao.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    for (const char* chave : {"TIPOBANCO", "SERVIDOR", "SERVIDORBASEDADOS", "TEMP", ""}) {
        const QString valor =
            ValorDaChave(bytes, QLatin1String(chave), Cifra::Nenhuma, QStringLiteral("fuzz"));
        ConfereLinha(valor, "valor");
        if (valor != Apara(valor)) Falha(QStringLiteral("valor com espaços nas pontas: ") + valor);
    }
}
