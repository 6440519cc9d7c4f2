#include "CenarioRetorno.h"

#include <QDir>

namespace nfce::teste {

using namespace Qt::StringLiterals;

void CenarioRetorno::SetUp() {
    BancoTeste::SetUp();
    if (IsSkipped()) return;
    Executa(u"CREATE TABLE rastro (cupom INT)"_s);
    Executa(u"CREATE TRIGGER rastreia AFTER UPDATE ON vendas FOR EACH ROW "
            "BEGIN INSERT INTO rastro (cupom) VALUES (NEW.cupom); END"_s);
    Reinicia();
}

void CenarioRetorno::Reinicia(const QStringList& config) {
    s.reset();
    for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"orcamento"_s, u"empresa"_s})
        Executa(u"DELETE FROM "_s + tabela);
    Executa(u"INSERT INTO vendas (cupom, nfce, tempo, sync) VALUES (501, 1234, '5', 1), "
            "(1234, 501, '5', 1), (900, 1234, '5', 1)"_s);
    Executa(u"INSERT INTO itens (cupom, Item, codprod, sync) VALUES (501, 1, 4321, 1), "
            "(501, 3, 78, 1), (1234, 3, 999, 1)"_s);
    Executa(u"INSERT INTO orcamento (cupom) VALUES (77)"_s);
    Executa(u"DELETE FROM rastro"_s);
    QDir(NaEmpresa({})).removeRecursively();
    for (const QString& p :
         {u"Envio"_s, u"Retorno"_s, u"Erro"_s, u"Validar/Validado"_s, u"Enviado/EmProcessamento"_s,
          u"Enviado/Autorizados/112026"_s, u"Contabilidade"_s})
        QDir().mkpath(NaEmpresa(p));
    Configura(config);
    ambiente.programasIniciados.clear();
    ambiente.perguntas.clear();
    s = std::make_unique<Servidor>(pasta.caminho(), ambiente);
    s->empresa.Cnpj = u"18123456000190"_s;
    s->empresa.Serie = u"1"_s;
    s->conexoes.PreparaConexaoPrincipal();
    s->conexoes.ReabreConexao();
    EstadoVenda& v = s->venda;
    v.NumCupom = 501;
    v.NumNfce = 1234;
    v.CnpjEmpresa = u"18123456000190"_s;
    v.SerieNfce = u"001"_s;
    v.DataArquivo = u"15112026"_s;
    v.MesAutorizados = v.MesContabil = u"112026"_s;
    v.ModoRetorno = u"NC1"_s;
    v.VendaOrcamento = true;
    v.NumOrcamento = 77;
    s->painel.LblMens01 = Chave;
    s->painel.LblQuantCup = u"5"_s;
}

QString CenarioRetorno::NaEmpresa(const QString& relativo) const {
    return pasta.Caminho(u"18123456000190/"_s + relativo);
}

void CenarioRetorno::Grava(const QString& relativo, const QByteArray& conteudo) const {
    pasta.EscreveArquivo(u"18123456000190/"_s + relativo, conteudo);
}

QByteArray CenarioRetorno::Le(const QString& relativo) const {
    QFile arquivo(NaEmpresa(relativo));
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

void CenarioRetorno::Responde(const QByteArray& linhas) const {
    Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, "54;");
    Grava(u"Retorno/000000000000054-pro-rec.txt"_s, ";104;Lote processado;\r\n" + linhas);
}

QString CenarioRetorno::Colunas(const QString& origem, const QString& colunas) {
    QStringList valores;
    for (const QString& coluna : colunas.split(u','))
        valores << Texto(u"SELECT "_s + coluna + u" FROM "_s + origem);
    return valores.join(u'|');
}

QByteArray Protocolo(const QByteArray& codigo, const QByteArray& motivo, bool digVal) {
    return "18123456000190;000001234;" + Chave.toLatin1() + ";2026-11-15T10:21:05-03:00;" +
           (codigo == "100" ? "131260000012345;" : "0;") +
           (digVal ? "zTbcpgGcvzfkV/AhKeieXtFntUk=;" : "") + codigo + ';' + motivo + ';';
}

} // namespace nfce::teste
