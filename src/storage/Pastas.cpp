#include "storage/Pastas.h"

#include "storage/ErroExecucao.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

QString Junta(const QString& pasta, const QString& nome) {
    if (pasta.isEmpty() || pasta.endsWith(u'/')) return pasta + nome;
    return pasta + u'/' + nome;
}

// The entry `nome` of `pasta` as spelled on disk, or "" when the folder has no such entry.
// The listing is read only when the exact name is missing, as names only (answer folders hold
// thousands of files and most names looked for are absent). Of several spellings side by side
// on a case-sensitive disk, the first in code-point order answers.
QString NomeNoDisco(const QString& pasta, const QString& nome) {
    if (QFileInfo::exists(Junta(pasta, nome))) return nome;
    QDir dir(pasta);
    dir.setFilter(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    QString achado;
    for (QDirIterator entradas(dir); entradas.hasNext();) {
        entradas.next();
        const QString entrada = entradas.fileName();
        if (entrada.compare(nome, Qt::CaseInsensitive) == 0 &&
            (achado.isEmpty() || entrada < achado))
            achado = entrada;
    }
    return achado;
}

QStringList Partes(const QString& relativo) {
    return QString(relativo).replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
}

// `partes` below `caminho`, each spelled as on disk where it exists.
QString Resolvido(QString caminho, const QStringList& partes) {
    bool existe = true;
    for (const QString& parte : partes) {
        // Below a part that is not on disk nothing is, so no more listings are read.
        const QString noDisco = existe ? NomeNoDisco(caminho, parte) : QString();
        existe = !noDisco.isEmpty();
        caminho = Junta(caminho, existe ? noDisco : parte);
    }
    return caminho;
}

// A raw path resolved part by part below its root ("/", a drive "C:", or none when relative).
// It was made by Caminho, or given by the shop: no check here.
QString Resolve(const QString& caminho) {
    const QString normal = QString(caminho).replace(u'\\', u'/');
    qsizetype raiz = 0;
    if (normal.startsWith(u'/'))
        raiz = 1;
    else if (normal.size() >= 2 && normal.at(1) == u':')
        raiz = 2;
    return Resolvido(normal.left(raiz), Partes(normal.mid(raiz)));
}

bool Dentro(const QString& caminho, const QString& raiz) {
    const QString limpo = QDir::cleanPath(caminho);
    if (raiz.isEmpty()) return QDir::isRelativePath(limpo) && !limpo.startsWith(u".."_s);
    const QString limpa = QDir::cleanPath(raiz);
    return limpo == limpa || limpo.startsWith(limpa.endsWith(u'/') ? limpa : limpa + u'/');
}

} // namespace

QString Caminho(const QString& raiz, const QString& relativo) {
    // Parts come from outside text too (keys read from UniNFe's answers): none may climb out.
    const QStringList partes = Partes(relativo);
    const bool sobe = partes.contains(u".."_s);
    const QString caminho = sobe ? QString() : Resolvido(raiz, partes);
    if (sobe || !Dentro(caminho, raiz))
        throw ErroExecucao(ErroAcessoCaminho,
                           u"Caminho fora da pasta %1: %2"_s.arg(QDir::toNativeSeparators(raiz),
                                                                 relativo.left(200)));
    return caminho;
}

bool ArquivoExiste(const QString& caminho) {
    return QFileInfo(Resolve(caminho)).isFile();
}

bool PastaExiste(const QString& caminho) {
    return QFileInfo(Resolve(caminho)).isDir();
}

void Alterar(const QString& pastaPrograma, const QString& cnpj, const QDate& hoje) {
    const QString mes = hoje.toString(u"MMyyyy");
    const QStringList pastas = {
        u"LOG"_s,
        u"LOG\\BK"_s,
        u"PDV"_s,
        u"XML"_s,
        u"Contabil"_s,
        cnpj,
        cnpj + u"\\Envio"_s,
        cnpj + u"\\Contabilidade"_s,
        cnpj + u"\\RETORNO"_s,
        cnpj + u"\\Contabilidade\\"_s + mes,
        cnpj + u"\\Eventos"_s,
        cnpj + u"\\Eventos\\"_s + mes,
    };
    const QDir dir;
    for (const QString& pasta : pastas)
        dir.mkdir(Caminho(pastaPrograma, pasta));
}

} // namespace nfce
