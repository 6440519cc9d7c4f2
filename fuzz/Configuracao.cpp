// The settings file "Config.ini", key by key, as LerConfig reads it.
#include "storage/Configuracao.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    // A key, a longer key it begins, and the empty key that every line begins with.
    for (const char* chave : {"SERVIDOR", "SERVIDORBASEDADOS", ""}) {
        const QString valor =
            ValorDaChave(bytes, QLatin1String(chave), Cifra::Nenhuma, QStringLiteral("fuzz"));
        ConfereLinha(valor, "valor");
        if (valor != Apara(valor)) Falha(QStringLiteral("valor com espaços nas pontas: ") + valor);
    }
}
