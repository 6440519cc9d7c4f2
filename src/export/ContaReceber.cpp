#include "export/ContaReceber.h"

#include "export/Literais.h"
#include "storage/Conexoes.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"

#include <cmath>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// Far beyond any instalment plan, well inside the dates a database takes.
constexpr double MaximoDeDias = 36500;

struct FormaPagamento {
    QString plano = u"1"_s;
    QString vencimento;
    QString codigo = u"1"_s;
    QString nome = u"30 DIAS"_s;
};

QDate SomaDias(const QDate& data, const QString& dias) {
    const double quantos = std::floor(Val(dias));
    if (!(std::abs(quantos) <= MaximoDeDias))
        throw ErroExecucao(ErroEstouro,
                           u"Estouro: parc1 de forpag fora do limite (%1)"_s.arg(dias.left(40)));
    return data.addDays(static_cast<qint64>(quantos));
}

FormaPagamento BuscaFormaPagamento(const Registros& venda, Conexoes& conexoes, const QDate& hoje) {
    const QString codigo = TextoDeVal(venda, u"forpag"_s);
    FormaPagamento forma;
    Registros rs;
    conexoes.AbreConsulta(rs, u"SELECT codigo, plano FROM forpag WHERE codigo = "_s + codigo);
    if (!rs.Eof()) forma.plano = TextoDeVal(rs, u"plano"_s);
    conexoes.AbreConsulta(rs, u"SELECT codigo, nome, parc1 FROM forpag WHERE codigo = "_s + codigo);
    if (rs.Eof()) {
        forma.vencimento = DataMySQL(hoje.addDays(30));
        return forma;
    }
    forma.vencimento = DataMySQL(SomaDias(venda.Data(u"Data"_s), rs.Texto(u"parc1"_s)));
    forma.codigo = rs.Texto(u"codigo"_s);
    forma.nome = rs.Texto(u"nome"_s);
    return forma;
}

} // namespace

bool PagaAPrazo(const Registros& venda) {
    return ValorDe(venda, u"Vale"_s) > Moeda() || ValorDe(venda, u"Outros"_s) > Moeda();
}

bool ClienteComConta(const Registros& venda, qint32 codigoClienteDoEmissor) {
    return Val(venda.Texto(u"cliente"_s)) >= 2 && codigoClienteDoEmissor != 999999;
}

QString InsereContaReceber(const Registros& venda, Conexoes& conexoes, const QDate& hoje,
                           qint32 usuario) {
    const FormaPagamento forma = BuscaFormaPagamento(venda, conexoes, hoje);
    QStringList valores = {forma.plano, venda.Texto(u"cliente"_s), venda.Texto(u"nomecliente"_s),
                           DataMySQL(venda.Data(u"Data"_s))};
    if (ValorDe(venda, u"Vale"_s) > Moeda()) valores.append(ValorPonto(venda.Campo(u"Vale"_s)));
    if (ValorDe(venda, u"Outros"_s) > Moeda()) valores.append(ValorPonto(venda.Campo(u"Outros"_s)));
    const QString cupom = venda.Texto(u"cupom"_s);
    valores << forma.vencimento << forma.codigo << forma.nome << u"V"_s << cupom << u"1"_s
            << u"Venda "_s + Zeros(cupom, 6)
            << (DiferenteDeZero(venda, u"nfce"_s) ? u"NFCE"_s : u"II"_s)
            << ValorPonto(venda.Campo(u"valor"_s)) << QString::number(usuario);
    return u"INSERT INTO contasreceber (codplano, codcli, nome, datalanc, valor, datavenc, "
           u"forpgto, nomepgto, tipo, "
           u"numvenda, parcela, documento, obs, valortotal, usuario ) VALUES ( "_s +
           ListaDeValores(valores);
}

} // namespace nfce
