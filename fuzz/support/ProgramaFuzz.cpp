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

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    nfce::teste::Alvo(QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    return 0;
}

namespace nfce::teste {

using namespace Qt::StringLiterals;

namespace {

const QDate Hoje(2026, 11, 15);
const QString MesDaVenda = u"112026"_s;
const QByteArray XmlAutorizado =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><nfeProc versao=\"4.00\">"
    "<NFe><xNome>Mercearia D'\xc3\x81vila</xNome></NFe></nfeProc>";

// The widths the shop's MariaDB tables declare for the columns the readers write: a longer value
// is refused there ("Data too long") while SQLite keeps it. erro (TEXT) counts UTF-8 bytes.
const struct {
    const char* coluna;
    int limite;
} Larguras[] = {{"vendas.chave", 44},    {"vendas.autorizacao", 60}, {"vendas.tempo", 10},
                {"vendas.lote", 20},     {"vendas.xml", 1},          {"vendas.situacao", 1},
                {"vendas.erro", 65535},  {"orcamento.chave", 44},    {"orcamento.autorizacao", 60},
                {"orcamento.tempo", 10}, {"orcamento.emitido", 1}};

void EscreveArquivo(const QString& caminho, QByteArrayView dados) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(dados.data(), dados.size()) < 0)
        Falha(u"não foi possível gravar "_s + caminho);
}

} // namespace

void ConfereChave(const QString& chave) {
    if (!chave.isEmpty() && !RespostaSemChave(chave) && !ChaveValida(chave))
        Falha(u"chave aceita que não é uma chave: "_s + chave.left(80));
}

void ConfereChaveLida(const ChaveLida& lida) {
    if (!Vazio(lida.chave) && !lida.recusada) ConfereChave(lida.chave);
}

void ConfereLinha(const QString& texto, const char* oQue) {
    if (texto.contains(u'\r') || texto.contains(u'\n'))
        Falha(u"fim de linha em "_s + QLatin1String(oQue) + u": "_s + texto.left(80));
}

[[noreturn]] void Falha(const QString& motivo) {
    std::fprintf(stderr, "\nFALHA: %s\n", motivo.toLocal8Bit().constData());
    std::abort();
}

ProgramaFuzz& ProgramaFuzz::Instancia() {
    // Qt's SQL drivers are plugins, which need an application object.
    static int argc = 1;
    static char nome[] = "fuzz", *argv[] = {nome, nullptr};
    if (!QCoreApplication::instance()) new QCoreApplication(argc, argv);
    static ProgramaFuzz programa;
    return programa;
}

ProgramaFuzz::ProgramaFuzz() : ambiente_(QDateTime(Hoje, QTime(10, 20, 30))) {
    const QString pasta = dir_.path();
    CriaPastaPrograma(pasta, false, Hoje);
    QFile config(pasta + u"/Config.ini"_s);
    config.open(QIODevice::ReadOnly);
    EscreveArquivo(config.fileName(), config.readAll().replace("ENVIOXML=NAO", "ENVIOXML=SIM"));
    QDir().mkpath(pasta + u"/contador/"_s + CnpjFuzz + u"/Contabilidade/001/"_s + MesDaVenda);
    QDir().mkpath(Empresa(u"ENVIADO/Autorizados/"_s + MesDaVenda));
    QDir().mkpath(Empresa(u"VALIDAR/VALIDADO"_s));

    servidor_ = std::make_unique<Servidor>(pasta, ambiente_);
    servidor_->empresa = CarregaEmpresa(pasta);
    servidor_->conexoes.PreparaConexaoPrincipal();
    servidor_->conexoes.ReabreConexao();
    servidor_->EmiteNfceImprime = [](const QString&) {};
    Conexoes& c = servidor_->conexoes;
    c.Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
              "nomecliente) VALUES (1234, 77, '2026-11-15', '10:20:30', 42.30, 50, 1, "
              "'CONSUMIDOR FINAL')"_s);
    for (const char* item : {"1, 1", "2, 11", "3, 123456"})
        c.Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                  "VALUES (1234, 77, "_s +
                  QLatin1String(item) + u", 1, 10, 10)"_s);
    c.Executa(u"INSERT INTO orcamento (cupom) VALUES (5)"_s);
    c.Executa(u"INSERT INTO empresa (pathenvio) VALUES ('"_s + pasta + u"/contador')"_s);
}

QString ProgramaFuzz::Empresa(const QString& relativo) const {
    return dir_.path() + u'/' + CnpjFuzz + u'/' + relativo;
}

void ProgramaFuzz::Escreve(const QString& relativo, QByteArrayView dados) const {
    EscreveArquivo(Empresa(relativo), dados);
}

void ProgramaFuzz::NovaEntrada(bool autorizado) {
    Servidor& s = *servidor_;
    s.conexoes.Executa(u"UPDATE vendas SET chave = '', autorizacao = '', erro = NULL, "
                       "tempo = '0', enviotime = 0, lote = '', xml = '', xml_info = NULL, "
                       "situacao = 'N', sync = 1"_s);
    s.conexoes.Executa(u"UPDATE itens SET situacao = 'N', sync = 1"_s);
    s.conexoes.Executa(u"UPDATE orcamento SET autorizacao = '', tempo = '', emitido = '', "
                       "cupomnfce = 0, chave = ''"_s);
    for (const QString& pasta : {Empresa(u"RETORNO"_s), Empresa(u"Envio"_s)})
        for (const QString& nome : QDir(pasta).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(pasta + u'/' + nome);
    const QString xml =
        Empresa(u"ENVIADO/Autorizados/"_s + MesDaVenda + u'/' + ChaveFuzz + u"-procNFe.xml"_s);
    QFile::remove(xml);
    if (autorizado) EscreveArquivo(xml, XmlAutorizado);

    // "CP" reprints and prints, "VENDA" re-emits after some rejections: both paths get inputs.
    s.venda = EstadoVenda{.NumCupom = CupomFuzz,
                          .NumNfce = NfceFuzz,
                          .CnpjEmpresa = CnpjFuzz,
                          .SerieNfce = u"001"_s,
                          .DataArquivo = u"15112026"_s,
                          .MesAutorizados = MesDaVenda,
                          .MesContabil = MesDaVenda,
                          .ModoRetorno = autorizado ? u"CP"_s : u"VENDA"_s,
                          .ImprimeCupom = true,
                          .VendaOrcamento = true,
                          .NumOrcamento = 5};
    s.painel = Painel{.LblMens01 = ChaveFuzz, .LblQuantCup = u"3"_s};
    ambiente_.registro.clear();
    ambiente_.programasIniciados.clear();
    ambiente_.perguntas.clear();
}

QString ProgramaFuzz::Texto(const QString& sql) {
    Registros rs;
    servidor_->conexoes.AbreConsulta(rs, sql);
    return rs.Eof() ? QString() : rs.Texto(rs.Campos().first());
}

void ProgramaFuzz::Roda(const std::function<void(Servidor&)>& leitor) {
    try {
        leitor(*servidor_);
    } catch (const ErroExecucao& erro) {
        Falha(u"erro %1: %2"_s.arg(erro.numero()).arg(erro.descricao()));
    }
    const QString contagem =
        Texto(u"SELECT COUNT(*) FROM vendas"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM vendas WHERE cupom = 77 AND nfce = 1234"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM itens WHERE cupom = 77"_s) + u'/' +
        Texto(u"SELECT COUNT(*) FROM orcamento WHERE cupom = 5"_s);
    if (contagem != u"1/1/3/1"_s) Falha(u"linhas alteradas: "_s + contagem);
    ConfereChave(Texto(u"SELECT chave FROM vendas"_s));
    ConfereChave(Texto(u"SELECT chave FROM orcamento"_s));
    for (const auto& [coluna, limite] : Larguras) {
        const QString nome = QLatin1String(coluna);
        const QString valor = Texto(u"SELECT %1 FROM %2"_s.arg(nome, nome.section(u'.', 0, 0)));
        const qsizetype tamanho = limite == 65535 ? valor.toUtf8().size() : valor.size();
        if (tamanho > limite)
            Falha(u"%1 com %2 caracteres não cabe no MariaDB: %3"_s.arg(
                nome, QString::number(tamanho), valor.left(80)));
    }
}

} // namespace nfce::teste
