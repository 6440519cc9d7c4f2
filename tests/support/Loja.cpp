#include "support/Loja.h"

#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "storage/Pastas.h"
#include "storage/Sql.h"

#include <QDir>
#include <QFile>

namespace nfce::teste {

using namespace Qt::StringLiterals;

void Loja::SetUp() {
    BancoTeste::SetUp();
    if (IsSkipped()) return;
    pasta.EscreveEmpresa(RegistroDaLoja);
    Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s});
    for (const QString& p : {u"Envio"_s, u"Validar"_s, u"Retorno"_s})
        QDir().mkpath(NaEmpresa(p));
    NovoServidor();
    Carrega(u"loja"_s);
    sim = std::make_unique<uninfesim::Simulador>(pasta.caminho());
    ambiente.AoBombear([this] {
        if (uninfeRodando) sim->Processa(ambiente.Agora());
    });
}

void Loja::TearDown() {
    s.reset();
    BancoTeste::TearDown();
}

void Loja::NovoServidor() {
    s = std::make_unique<Servidor>(pasta.caminho(), ambiente);
    s->empresa = CarregaEmpresa(pasta.caminho());
    s->conexoes.PreparaConexaoPrincipal();
    s->conexoes.ReabreConexao();
}

void Loja::Carrega(const QString& nome) {
    ExecutaScript(*s->conexoes.ConexaoPrincipal(),
                  QStringLiteral(NFCE_DADOS_TESTE "/nfce/") + nome + u".sql"_s);
}

void Loja::Limpa() {
    for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"nfce"_s})
        Executa(u"DELETE FROM "_s + tabela);
}

void Loja::Venda(int nfce, int cupom, const QString& tempo, const QString& erro) {
    Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
            "nomecliente, tempo, enviotime, autorizacao, erro) VALUES (%1, %2, '2026-11-15', "
            "'10:20:30', 21.15, 21.15, 1, 'CONSUMIDOR FINAL', '%3', 0, '', '%4')"_s.arg(nfce)
                .arg(cupom)
                .arg(tempo, erro));
    Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
            "VALUES (%1, %2, 1, 1, 1, 21.15, 21.15)"_s.arg(nfce)
                .arg(cupom));
}

QString Loja::Colunas(const QString& origem, const QString& colunas) {
    QStringList valores;
    for (const QString& coluna : colunas.split(u','))
        valores << Texto(u"SELECT "_s + coluna + u" FROM "_s + origem);
    return valores.join(u'|');
}

void Loja::PoeNaFila(const QStringList& numeros) {
    const auto local = s->conexoes.AbreLocal();
    local->Executa(u"DELETE FROM ncupom"_s);
    for (const QString& n : numeros)
        local->Executa(u"INSERT INTO ncupom (cupom) VALUES ('%1')"_s.arg(EscapaTexto(n)));
}

QStringList Loja::Fila() {
    QStringList numeros;
    for (const auto& linha :
         s->conexoes.AbreLocal()->Consulta(u"SELECT cupom FROM ncupom ORDER BY rowid"_s).linhas)
        numeros.append(linha.value(0).toString());
    return numeros;
}

bool Loja::Existe(const QString& relativo) const {
    return ArquivoExiste(Caminho(pasta.caminho(), u"18123456000104\\"_s + relativo));
}

QByteArray Loja::Le(const QString& relativo) const {
    QFile arquivo(NaEmpresa(relativo));
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

} // namespace nfce::teste
