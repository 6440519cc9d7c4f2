// The settings file "Config.ini", key by key, as LerConfig reads it.
#include "storage/Configuracao.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    const QByteArrayView bytes(dados, static_cast<qsizetype>(tamanho));
    for (const char* chave : {"TIPOBANCO", "SERVIDOR", "SERVIDORBASEDADOS", "TEMP", ""}) {
        const QString valor =
            ValorDaChave(bytes, QLatin1String(chave), Cifra::Nenhuma, QStringLiteral("fuzz"));
        if (valor.contains(u'\r') || valor.contains(u'\n') || valor != Apara(valor))
            Falha(QStringLiteral("valor com fim de linha ou espaços nas pontas: ") + valor);
    }
    return 0;
}
