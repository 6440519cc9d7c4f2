// Access-key requests: "<name>-gerar-chave.xml" or ".txt" in Envio.
#include "Ansi.h"
#include "Arquivos.h"
#include "Chave.h"
#include "LeituraXml.h"
#include "Simulador.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

struct PedidoChave {
    CamposChave campos;
    QStringList erros;
};

// Fields by lower-case name: from the XML's elements, or from "name|value" lines.
QHash<QString, QString> Valores(const QByteArray& bytes, bool xml, QStringList& erros) {
    QHash<QString, QString> valores;
    if (xml) {
        const FolhasXml folhas = LeFolhas(bytes);
        if (!folhas.ok()) erros.append(folhas.erro);
        for (auto it = folhas.valores.cbegin(); it != folhas.valores.cend(); ++it)
            valores.insert(it.key().toLower(), it.value().trimmed());
        return valores;
    }
    for (const QString& linha : DeAnsi(bytes).split(u'\n')) {
        const QString limpa = linha.trimmed();
        if (limpa.isEmpty()) continue;
        const qsizetype barra = limpa.indexOf(u'|');
        if (barra < 0)
            erros.append(u"Segmento ["_s + limpa.toUpper() + u"] inválido"_s);
        else
            valores.insert(limpa.left(barra).trimmed().toLower(), limpa.mid(barra + 1).trimmed());
    }
    return valores;
}

// A whole number of at most `digitos` digits; absent gives `padrao`.
qint64 Numero(const QHash<QString, QString>& valores, const QString& nome, qint64 padrao,
              int digitos, QStringList& erros) {
    const QString valor = valores.value(nome.toLower());
    if (valor.isEmpty()) return padrao;
    static const QRegularExpression numero(u"^\\d+$"_s);
    const QString semZeros = QString(valor).remove(QRegularExpression(u"^0+(?=\\d)"_s));
    if (!numero.match(valor).hasMatch() || semZeros.size() > digitos) {
        erros.append(u"Conteúdo inválido em "_s + nome + u": "_s + valor);
        return 0;
    }
    return semZeros.toLongLong();
}

void ConfereAamm(const QString& aamm, QStringList& erros) {
    static const QRegularExpression quatro(u"^\\d{4}$"_s);
    if (aamm.isEmpty()) {
        erros.append(u"Ano e mês da emissão deve ser informado"_s);
        return;
    }
    if (!quatro.match(aamm).hasMatch() || aamm.left(2) == u"00"_s) {
        erros.append(u"Ano da emissão inválido"_s);
        return;
    }
    const int mes = aamm.mid(2, 2).toInt();
    if (mes < 1 || mes > 12) erros.append(u"Mês da emissão inválido"_s);
}

PedidoChave LePedido(const QByteArray& bytes, bool xml, const Opcoes& opcoes) {
    PedidoChave pedido;
    QStringList& erros = pedido.erros;
    const QHash<QString, QString> v = Valores(bytes, xml, erros);
    CamposChave& c = pedido.campos;
    c.cUF = int(Numero(v, u"UF"_s, opcoes.uf, 2, erros));
    c.tpEmis = int(Numero(v, u"tpEmis"_s, opcoes.tpEmis, 1, erros));
    c.nNF = Numero(v, u"nNF"_s, 0, 9, erros);
    c.cNF = Numero(v, u"cNF"_s, 0, 8, erros);
    c.serie = int(Numero(v, u"serie"_s, 0, 3, erros));
    c.mod = int(Numero(v, u"mod"_s, 55, 2, erros));
    c.aamm = v.value(u"aamm"_s);
    c.cnpj = v.value(u"cnpj"_s);
    if (c.nNF == 0) erros.append(u"Número da nota fiscal deve ser informado"_s);
    ConfereAamm(c.aamm, erros);
    if (c.cnpj.isEmpty())
        erros.append(u"CNPJ deve ser informado"_s);
    else if (!QRegularExpression(u"^\\d{1,14}$"_s).match(c.cnpj).hasMatch())
        erros.append(u"CNPJ inválido: "_s + c.cnpj);
    return pedido;
}

} // namespace

void Simulador::AtendeChaves(const QString& empresa) {
    const QStringList envio = Variantes(empresa, u"Envio"_s);
    for (const bool xml : {true, false}) {
        const QString sufixo = xml ? u"-gerar-chave.xml"_s : u"-gerar-chave.txt"_s;
        for (const QString& arquivo : TerminadosEm(envio, sufixo)) {
            QByteArray bytes;
            if (!Pronto(arquivo) || !Le(arquivo, bytes)) continue;
            const QString nome = QFileInfo(arquivo).fileName();
            const QString base = Pasta(empresa, {u"Retorno"_s}) + u'/' + SemSufixo(nome, sufixo);
            const PedidoChave pedido = LePedido(bytes, xml, opcoes_);
            if (!pedido.erros.isEmpty()) {
                const QString erro = base + u"-ret-gerar-chave.err"_s;
                if (!Escreve(empresa, erro, ErroDeChave(erro, pedido.erros))) continue;
                Move(arquivo, Pasta(empresa, {u"Erro"_s}) + u'/' + nome);
                Registra(empresa, nome + u": erro, "_s + pedido.erros.join(u"; "_s));
                continue;
            }
            const Cenario cenario = CenarioDe(pedido.campos.nNF);
            if (cenario.chave == RespostaChave::Nenhuma) continue;
            const QString chave = cenario.chave == RespostaChave::Zero
                                      ? u"0"_s
                                      : cenario.chaveFalsa.value_or(MontaChave(pedido.campos));
            const bool texto = !xml || cenario.chave == RespostaChave::Texto;
            if (!Escreve(empresa,
                         base + (texto ? u"-ret-gerar-chave.txt"_s : u"-ret-gerar-chave.xml"_s),
                         texto ? ChaveEmTexto(chave) : ChaveEmXml(chave)))
                continue;
            QFile::remove(arquivo);
            Registra(empresa, nome + u": chave "_s + chave);
        }
    }
}

} // namespace uninfesim
