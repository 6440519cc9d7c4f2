#include "LeituraTxt.h"

#include "Ansi.h"

#include <QRegularExpression>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

const QString kFimLinha = u"\r\n"_s;

QString Onde(const QString& segmento) {
    return u"Segmento ["_s + segmento + u"]: "_s;
}

QString Linha(int linha, const QString& texto) {
    return u"\tLinha: "_s + QString::number(linha) + u": Conteudo do segmento: "_s + texto +
           kFimLinha;
}

class Leitor {
public:
    LeituraTxt Le(const QStringList& linhas);

private:
    void LeRegistro(const QString& texto, int linha);
    bool EscolheLayout(const QString& segmento, const QStringList& campos, const QString& texto,
                       int linha, Layout& escolhido);
    void ConfereObrigatorios(const Layout& layout, const Registro& r);
    void ConfereNota(const NotaTxt& nota);
    void ConfereValor(const Registro& r, const QString& campo, const QRegularExpression& forma);
    void ConfereFuso(const Registro& b);

    LeituraTxt leitura_;
};

LeituraTxt Leitor::Le(const QStringList& linhas) {
    int primeira = 0;
    while (primeira < linhas.size() && linhas.at(primeira).trimmed().isEmpty())
        ++primeira;
    if (primeira == linhas.size()) {
        leitura_.resultado = LeituraTxt::Resultado::SemInformacao;
        return leitura_;
    }
    const QString cabecalho = QString(linhas.at(primeira)).remove(u' ');
    if (!cabecalho.startsWith(u"NOTAFISCAL"_s, Qt::CaseInsensitive)) {
        leitura_.mensagemErro = u"Arquivo texto sem o segmento NOTAFISCAL na primeira linha."_s +
                                kFimLinha + Linha(primeira + 1, linhas.at(primeira));
        leitura_.resultado = LeituraTxt::Resultado::Falha;
        return leitura_;
    }
    for (int i = primeira + 1; i < linhas.size(); ++i)
        if (!linhas.at(i).trimmed().isEmpty()) LeRegistro(linhas.at(i), i + 1);
    if (leitura_.notas.isEmpty() && leitura_.mensagemErro.isEmpty())
        leitura_.resultado = LeituraTxt::Resultado::SemInformacao;
    for (const NotaTxt& nota : leitura_.notas)
        ConfereNota(nota);
    if (!leitura_.mensagemErro.isEmpty()) leitura_.resultado = LeituraTxt::Resultado::Falha;
    return leitura_;
}

void Leitor::LeRegistro(const QString& texto, int linha) {
    QStringList campos = texto.split(u'|');
    const QString segmento = campos.takeFirst().trimmed();
    if (campos.size() == 1 && EhMarcador(segmento)) return;
    Layout layout;
    if (!EscolheLayout(segmento, campos, texto, linha, layout)) return;
    if (layout.segmento == u"A"_s) leitura_.notas.append(NotaTxt());
    if (leitura_.notas.isEmpty()) {
        leitura_.mensagemErro +=
            Onde(segmento) + u"segmento antes do segmento A."_s + kFimLinha + Linha(linha, texto);
        return;
    }
    Registro r{layout.segmento, {}, layout.campos, linha, texto};
    for (qsizetype i = 0; i < layout.campos.size(); ++i)
        r.campos.insert(layout.campos.at(i),
                        i < campos.size() ? campos.at(i).trimmed() : QString());
    ConfereObrigatorios(layout, r);
    leitura_.notas.last().registros.append(r);
}

bool Leitor::EscolheLayout(const QString& segmento, const QStringList& campos, const QString& texto,
                           int linha, Layout& escolhido) {
    const QList<Layout> layouts = campos.isEmpty() ? QList<Layout>() : LayoutsDe(segmento);
    if (layouts.isEmpty()) {
        leitura_.mensagemErro +=
            Onde(segmento) + u"segmento desconhecido."_s + kFimLinha + Linha(linha, texto);
        return false;
    }
    if (layouts.size() == 1) {
        escolhido = layouts.first();
        return true;
    }
    for (const Layout& layout : layouts)
        if (layout.barras() == campos.size()) {
            escolhido = layout;
            return true;
        }
    for (const Layout& layout : layouts)
        leitura_.mensagemErro += u"Layout: "_s + layout.texto + kFimLinha;
    leitura_.mensagemErro += Onde(segmento) + u"quantidade de campos ("_s +
                             QString::number(campos.size()) + u") não confere com o layout."_s +
                             kFimLinha + Linha(linha, texto);
    return false;
}

void Leitor::ConfereObrigatorios(const Layout& layout, const Registro& r) {
    for (const QString& campo : layout.obrigatorios)
        if (r[campo].isEmpty())
            leitura_.mensagemErro += u"Layout: "_s + layout.texto + kFimLinha + Onde(r.segmento) +
                                     u"tag <"_s + campo + u"> deve ser informada."_s + kFimLinha +
                                     Linha(r.linha, r.texto);
}

void Leitor::ConfereValor(const Registro& r, const QString& campo,
                          const QRegularExpression& forma) {
    const QString valor = r[campo];
    if (valor.isEmpty() || forma.match(valor).hasMatch()) return;
    leitura_.mensagemErro += Onde(r.segmento) + u"tag <"_s + campo + u"> inválida: "_s + valor +
                             kFimLinha + Linha(r.linha, r.texto);
}

void Leitor::ConfereFuso(const Registro& b) {
    static const QRegularExpression utc(u"T.*[+-]00:00$"_s);
    if (!utc.match(b[u"dhEmi"_s]).hasMatch()) return;
    leitura_.mensagemErro += Onde(b.segmento) + u"tag <dhEmi> com fuso horário inválido: "_s +
                             b[u"dhEmi"_s] + kFimLinha + Linha(b.linha, b.texto);
}

void Leitor::ConfereNota(const NotaTxt& nota) {
    static const QStringList exigidos = {u"B"_s, u"C"_s,   u"C05"_s, u"H"_s,
                                         u"I"_s, u"W02"_s, u"X"_s,   u"YA"_s};
    for (const QString& segmento : exigidos)
        if (!nota.Tem(segmento))
            leitura_.mensagemErro +=
                u"Segmento ["_s + segmento + u"]: segmento não informado."_s + kFimLinha;
    if (!nota.Tem(u"C02"_s) && !nota.Tem(u"C02a"_s))
        leitura_.mensagemErro += u"Segmento [C02]: segmento não informado."_s + kFimLinha;
    const auto digitos = [](int de, int ate) {
        return QRegularExpression(u"^\\d{%1,%2}$"_s.arg(de).arg(ate));
    };
    const Registro b = nota.Primeiro(u"B"_s);
    ConfereValor(b, u"cUF"_s, digitos(2, 2));
    ConfereValor(b, u"mod"_s, digitos(2, 2));
    ConfereValor(b, u"serie"_s, digitos(1, 3));
    ConfereValor(b, u"nNF"_s, digitos(1, 9));
    ConfereValor(b, u"tpEmis"_s, digitos(1, 1));
    ConfereValor(b, u"cNF"_s, digitos(1, 8));
    ConfereValor(
        b, u"dhEmi"_s,
        QRegularExpression(u"^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d[+-]\\d\\d:\\d\\d$"_s));
    ConfereFuso(b);
    ConfereValor(nota.Primeiro(u"C02"_s), u"CNPJ"_s, digitos(14, 14));
    ConfereValor(nota.Primeiro(u"C02a"_s), u"CPF"_s, digitos(11, 11));
}

} // namespace

Registro NotaTxt::Primeiro(const QString& segmento) const {
    for (const Registro& r : registros)
        if (r.segmento == segmento) return r;
    return {};
}

bool NotaTxt::Tem(const QString& segmento) const {
    return !Primeiro(segmento).segmento.isEmpty();
}

LeituraTxt LeTxt(const QByteArray& bytes) {
    QStringList linhas = DeAnsi(bytes).split(u'\n');
    for (QString& linha : linhas)
        if (linha.endsWith(u'\r')) linha.chop(1);
    return Leitor().Le(linhas);
}

} // namespace uninfesim
