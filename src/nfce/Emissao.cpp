#include "nfce/Emissao.h"

#include "nfce/Valores.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

#include <optional>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

InstanteNfce DoPainel(const Painel& painel) {
    const QDate data = QDate::fromString(painel.lblData, u"dd/MM/yyyy");
    const QTime hora = QTime::fromString(painel.lblHora, u"HH:mm:ss");
    if (!data.isValid() || !hora.isValid())
        throw ErroExecucao(ErroTipoIncompativel,
                           u"Data e hora da venda inválidas no painel: \"%1\" \"%2\""_s.arg(
                               painel.lblData.left(40), painel.lblHora.left(40)));
    return {data, hora, data};
}

// The latest period of the table nfce, when it holds a valid date and time.
std::optional<InstanteNfce> DaTabelaNfce(Conexoes& conexoes) {
    Registros rs;
    conexoes.AbreConsulta(rs, u"SELECT dataentrada, horaentrada FROM nfce ORDER BY id DESC"_s);
    if (rs.Eof()) return std::nullopt;
    const QDate data = QDate::fromString(rs.Texto(u"dataentrada"_s).trimmed(), u"dd/MM/yyyy");
    const QTime hora = QTime::fromString(rs.Texto(u"horaentrada"_s).trimmed(), u"HH:mm:ss");
    if (!data.isValid() || !hora.isValid()) return std::nullopt;
    return InstanteNfce{data, hora, data};
}

} // namespace

InstanteNfce InstanteDaNfce(Servidor& servidor, const VarianteGerador& variante) {
    if (variante.data == OrigemData::TabelaNfce)
        if (auto daTabela = DaTabelaNfce(servidor.conexoes)) return *daTabela;
    InstanteNfce instante = DoPainel(servidor.painel);
    if (variante.data == OrigemData::Sistema) instante.dataArquivo = servidor.ambiente.Data();
    return instante;
}

bool EmContingencia(const Servidor& servidor, const VarianteGerador& variante) {
    return variante.tipo == TipoDocumento::Contingencia ||
           InteiroDe(servidor.venda.TipoEmissao) != 1;
}

QString CaminhoNfce(const Servidor& servidor, bool contingencia, qint64 nNF,
                    const QDate& dataArquivo) {
    const Empresa& e = servidor.empresa;
    const QString nome = Zeros(nNF, 9) + u'_' + e.Cnpj + u'_' + Zeros(e.Serie, 3) + u'_' +
                         dataArquivo.toString(u"dd_MM_yyyy") + u"-nfe.txt"_s;
    return Caminho(servidor.pasta,
                   e.Cnpj + (contingencia ? u"\\Validar\\"_s : u"\\Envio\\"_s) + nome);
}

} // namespace nfce
