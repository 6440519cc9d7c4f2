#include "support/ProgramaFuzz.h"

#include "nfce/ChaveAcesso.h"
#include "storage/Configuracao.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"
#include "storage/Instalacao.h"
#include "storage/Registros.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdio>
#include <cstdlib>

namespace nfce::teste {

using namespace Qt::StringLiterals;

namespace {

const QDate Hoje(2026, 11, 15);
const QString Cnpj = u"11222333000181"_s;
const QString MesDaVenda = u"112026"_s;
const QByteArray XmlAutorizado =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><nfeProc versao=\"4.00\">"
    "<NFe><xNome>Mercearia D'\xc3\x81vila</xNome></NFe></nfeProc>";

// The width of the columns the readers write, as the shop's MariaDB tables declare them: a
// longer value is refused there ("Data too long") while SQLite keeps it.
struct Coluna {
    const char* nome;
    int limite; // characters; erro (TEXT) in UTF-8 bytes
};
const Coluna ColunasDaVenda[] = {{"chave", 44}, {"autorizacao", 60}, {"tempo", 10},  {"lote", 20},
                                 {"xml", 1},    {"situacao", 1},     {"erro", 65535}};
const Coluna ColunasDoOrcamento[] = {
    {"chave", 44}, {"autorizacao", 60}, {"tempo", 10}, {"emitido", 1}};

// Qt's SQL drivers are plugins, which need an application object.
void GaranteAplicacao() {
    static int argc = 1;
    static char nome[] = "fuzz";
    static char* argv[] = {nome, nullptr};
    if (!QCoreApplication::instance()) new QCoreApplication(argc, argv);
}

void EsvaziaPasta(const QString& caminho) {
    QDir pasta(caminho);
    for (const QString& nome : pasta.entryList(QDir::Files | QDir::Hidden))
        pasta.remove(nome);
}

void ConfereLarguras(Registros& rs, const Coluna* inicio, const Coluna* fim,
                     const QString& tabela) {
    for (const Coluna* c = inicio; c != fim; ++c) {
        const QString valor = rs.Texto(QLatin1String(c->nome));
        const qsizetype tamanho = c->limite == 65535 ? valor.toUtf8().size() : valor.size();
        if (tamanho > c->limite)
            Falha(u"%1.%2 com %3 caracteres não cabe no MariaDB: %4"_s.arg(
                tabela, QLatin1String(c->nome), QString::number(tamanho), valor.left(80)));
    }
}

} // namespace

QString ChaveFuzz() {
    return u"31261111222333000181650010000012349000012344"_s;
}

QString CnpjFuzz() {
    return Cnpj;
}

void ConfereChave(const QString& chave) {
    if (!chave.isEmpty() && !RespostaSemChave(chave) && !ChaveValida(chave))
        Falha(u"chave aceita que não é uma chave: "_s + chave.left(80));
}

void ConfereChaveLida(const ChaveLida& lida) {
    if (!Vazio(lida.chave) && !lida.recusada) ConfereChave(lida.chave);
}

[[noreturn]] void Falha(const QString& motivo) {
    std::fprintf(stderr, "\nFALHA: %s\n", motivo.toLocal8Bit().constData());
    std::abort();
}

void EscreveArquivo(const QString& caminho, QByteArrayView dados) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(dados.data(), dados.size()) < 0)
        Falha(u"não foi possível gravar "_s + caminho);
}

ParDeArquivos DivideNoNulo(const uint8_t* dados, size_t tamanho) {
    const QByteArrayView tudo(dados, static_cast<qsizetype>(tamanho));
    const qsizetype nulo = tudo.indexOf('\0');
    if (nulo < 0) return {"54;", tudo};
    return {tudo.first(nulo), tudo.sliced(nulo + 1)};
}

ProgramaFuzz& ProgramaFuzz::Instancia() {
    GaranteAplicacao();
    static ProgramaFuzz programa;
    return programa;
}

ProgramaFuzz::ProgramaFuzz() : ambiente_(QDateTime(Hoje, QTime(10, 20, 30))) {
    const QString pasta = dir_.path();
    CriaPastaPrograma(pasta, false, Hoje);
    QFile config(pasta + u"/Config.ini"_s);
    config.open(QIODevice::ReadOnly);
    const QByteArray linhas = config.readAll().replace("ENVIOXML=NAO", "ENVIOXML=SIM");
    config.close();
    EscreveArquivo(config.fileName(), linhas);
    QDir().mkpath(pasta + u"/contador/"_s + Cnpj + u"/Contabilidade/001/"_s + MesDaVenda);
    QDir().mkpath(Empresa(u"ENVIADO/Autorizados/"_s + MesDaVenda));
    QDir().mkpath(Empresa(u"VALIDAR/VALIDADO"_s));

    servidor_ = std::make_unique<Servidor>(pasta, ambiente_);
    servidor_->empresa = CarregaEmpresa(pasta);
    servidor_->conexoes.PreparaConexaoPrincipal();
    servidor_->conexoes.ReabreConexao();
    servidor_->EmiteNfceImprime = [](const QString&) {};
    CriaVenda();
}

void ProgramaFuzz::CriaVenda() {
    Conexoes& c = servidor_->conexoes;
    c.Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
              "nomecliente) VALUES (1234, 77, '2026-11-15', '10:20:30', 42.30, 50, 1, "
              "'CONSUMIDOR FINAL')"_s);
    for (const char* item : {"1, 1", "2, 11", "3, 123456"})
        c.Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                  "VALUES (1234, 77, "_s +
                  QLatin1String(item) + u", 1, 10, 10)"_s);
    c.Executa(u"INSERT INTO orcamento (cupom) VALUES (5)"_s);
    c.Executa(u"INSERT INTO empresa (pathenvio) VALUES ('"_s + dir_.path() + u"/contador')"_s);
}

QString ProgramaFuzz::Empresa(const QString& relativo) const {
    return dir_.path() + u'/' + Cnpj + u'/' + relativo;
}

void ProgramaFuzz::Escreve(const QString& relativo, QByteArrayView dados) const {
    EscreveArquivo(Empresa(relativo), dados);
}

Servidor& ProgramaFuzz::NovaEntrada(bool autorizado) {
    Servidor& s = *servidor_;
    s.conexoes.Executa(u"UPDATE vendas SET chave = '', autorizacao = '', erro = NULL, "
                       "tempo = '0', enviotime = 0, lote = '', xml = '', xml_info = NULL, "
                       "situacao = 'N', sync = 1"_s);
    s.conexoes.Executa(u"UPDATE itens SET situacao = 'N', sync = 1"_s);
    s.conexoes.Executa(u"UPDATE orcamento SET autorizacao = '', tempo = '', emitido = '', "
                       "cupomnfce = 0, chave = ''"_s);
    EsvaziaPasta(Empresa(u"RETORNO"_s));
    EsvaziaPasta(Empresa(u"Envio"_s));
    const QString xml =
        Empresa(u"ENVIADO/Autorizados/"_s + MesDaVenda + u'/' + ChaveFuzz() + u"-procNFe.xml"_s);
    if (autorizado)
        EscreveArquivo(xml, XmlAutorizado);
    else
        QFile::remove(xml);

    s.venda = EstadoVenda{};
    s.venda.NumCupom = CupomFuzz;
    s.venda.NumNfce = NfceFuzz;
    s.venda.CnpjEmpresa = Cnpj;
    s.venda.SerieNfce = u"001"_s;
    s.venda.DataArquivo = u"15112026"_s;
    s.venda.MesAutorizados = MesDaVenda;
    s.venda.MesContabil = MesDaVenda;
    // "CP" reprints and prints, "VENDA" re-emits after some rejections: both paths get inputs.
    s.venda.ModoRetorno = autorizado ? u"CP"_s : u"VENDA"_s;
    s.venda.ImprimeCupom = true;
    s.venda.VendaOrcamento = true;
    s.venda.NumOrcamento = 5;
    s.painel = Painel{};
    s.painel.LblMens01 = ChaveFuzz();
    s.painel.LblQuantCup = u"3"_s;
    ambiente_.registro.clear();
    ambiente_.programasIniciados.clear();
    ambiente_.perguntas.clear();
    return s;
}

void ProgramaFuzz::Roda(const std::function<void(Servidor&)>& leitor) {
    try {
        leitor(*servidor_);
    } catch (const ErroExecucao& erro) {
        Falha(u"erro %1: %2"_s.arg(erro.numero()).arg(erro.descricao()));
    }
    Confere();
}

QString ProgramaFuzz::Texto(const QString& sql) {
    Registros rs;
    servidor_->conexoes.AbreConsulta(rs, sql);
    return rs.Eof() ? QString() : rs.Texto(rs.Campos().first());
}

void ProgramaFuzz::Confere() {
    const QString contagem =
        Texto(u"SELECT COUNT(*) FROM vendas"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM vendas WHERE cupom = 77 AND nfce = 1234"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM itens WHERE cupom = 77"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM orcamento WHERE cupom = 5"_s);
    if (contagem != u"1/1/3/1"_s) Falha(u"linhas alteradas: "_s + contagem);
    ConfereChave(Texto(u"SELECT chave FROM vendas"_s));
    ConfereChave(Texto(u"SELECT chave FROM orcamento"_s));
    Registros venda;
    servidor_->conexoes.AbreConsulta(venda, u"SELECT * FROM vendas"_s);
    ConfereLarguras(venda, std::begin(ColunasDaVenda), std::end(ColunasDaVenda), u"vendas"_s);
    Registros orcamento;
    servidor_->conexoes.AbreConsulta(orcamento, u"SELECT * FROM orcamento"_s);
    ConfereLarguras(orcamento, std::begin(ColunasDoOrcamento), std::end(ColunasDoOrcamento),
                    u"orcamento"_s);
}

} // namespace nfce::teste
