// The line reader under every answer file.
#include "storage/ArquivoTexto.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    const QByteArrayView bytes(dados, static_cast<qsizetype>(tamanho));
    const QStringList linhas = LinhasDoTexto(bytes);
    for (const QString& linha : linhas)
        if (linha.contains(u'\r') || linha.contains(u'\n'))
            Falha(QStringLiteral("fim de linha dentro de uma linha"));
    // Only an empty file or a lone line end has no lines: every byte decodes to a character.
    const bool semLinhas = bytes.isEmpty() || bytes == "\n" || bytes == "\r" || bytes == "\r\n";
    if (linhas.isEmpty() != semLinhas) Falha(QStringLiteral("linhas perdidas ou inventadas"));
    return 0;
}
