#include "LeituraXml.h"

#include <QXmlStreamReader>

namespace uninfesim {

using namespace Qt::StringLiterals;

FolhasXml LeFolhas(const QByteArray& xml) {
    FolhasXml folhas;
    QXmlStreamReader leitor(xml);
    QString elemento;
    while (!leitor.atEnd()) {
        leitor.readNext();
        if (leitor.isStartElement()) {
            elemento = leitor.name().toString();
            for (const QXmlStreamAttribute& atributo : leitor.attributes()) {
                const QString nome = elemento + u'@' + atributo.name().toString();
                if (!folhas.valores.contains(nome))
                    folhas.valores.insert(nome, atributo.value().toString());
            }
        } else if (leitor.isCharacters() && !leitor.isWhitespace() && !elemento.isEmpty() &&
                   !folhas.valores.contains(elemento)) {
            folhas.valores.insert(elemento, leitor.text().toString());
        } else if (leitor.isEndElement()) {
            elemento.clear();
        }
    }
    if (leitor.hasError()) folhas.erro = leitor.errorString();
    return folhas;
}

} // namespace uninfesim
