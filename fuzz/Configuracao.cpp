// The settings file "Config.ini" as LerConfig reads it.
#include "storage/Configuracao.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    static const QString pasta = PastaDeArquivos();
    EscreveArquivo(pasta + QStringLiteral("/Config.ini"),
                   QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    for (const char* chave :
         {"TIPOBANCO", "SERVIDOR", "SERVIDORBASEDADOS", "TEMP", "ENVIOXML", ""}) {
        const QString valor = LerConfig(pasta, QLatin1String(chave));
        if (valor.contains(u'\r') || valor.contains(u'\n') || valor != Apara(valor))
            Falha(QStringLiteral("valor com fim de linha ou espaços nas pontas: ") + valor);
    }
    return 0;
}
