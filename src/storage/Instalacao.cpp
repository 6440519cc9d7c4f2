#include "storage/Instalacao.h"

#include "storage/Conexao.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"
#include "storage/Pastas.h"
#include "storage/Publicacao.h"

#include <QDir>

namespace nfce {

namespace {

// A key answers for every line that begins with it: shorter keys come first.
const char* const configuracao = "TIPOBANCO=SQLITE\r\n"
                                 "SERVIDOR=localhost\r\n"
                                 "SERVIDORBASE=localhost\r\n"
                                 "SERVIDORBASEDADOS=remota.db\r\n"
                                 "SERVIDORUSUARIO=master\r\n"
                                 "BASEDADOS=loja.db\r\n"
                                 "TEMP=3\r\n"
                                 "TMPAMBNFCE=2\r\n"
                                 "REGIMETRIB=1\r\n"
                                 "ENVIOXML=NAO\r\n"
                                 "VENDASONLINE=SIM\r\n"
                                 "VENDASONLINESRV=SIM\r\n"
                                 "ESTOQUEFISICO=NAO\r\n";

const QStringList empresaExemplo = {
    QStringLiteral("CNPJ=11222333000181"),
    QStringLiteral("NOME=MERCADINHO EXEMPLO LTDA"),
    QStringLiteral("SERIE=1"),
    QStringLiteral("CODMUNICIPIO=3106200"),
    QStringLiteral("IE=0623079040081"),
    QStringLiteral("ENDERECO=RUA DAS FLORES"),
    QStringLiteral("NUMERO=100"),
    QStringLiteral("COMPLEMENTO=LOJA 1"),
    QStringLiteral("BAIRRO=CENTRO"),
    QStringLiteral("CIDADE=BELO HORIZONTE"),
    QStringLiteral("UF=MG"),
    QStringLiteral("TELEFONE=3133334444"),
    QStringLiteral("CEP=30130000"),
};

void CriaBanco(const QString& arquivo, const QString& esquema, bool exemplos) {
    Conexao conexao(TipoBanco::Sqlite, arquivo, Conexao::Arquivo::CriaSeFaltar);
    conexao.Abre();
    CriaEsquema(conexao, esquema);
    if (exemplos) ExecutaScript(conexao, QStringLiteral(":/schema/exemplos.sql"));
}

} // namespace

void CriaPastaPrograma(const QString& pasta, bool exemplos, const QDate& hoje) {
    if (!QDir().mkpath(pasta))
        throw ErroExecucao(ErroCaminhoNaoEncontrado,
                           QStringLiteral("Não foi possível criar a pasta ") + pasta);
    if (ArquivoExiste(Caminho(pasta, QStringLiteral("Config.ini"))))
        throw ErroExecucao(ErroArquivoJaExiste,
                           pasta + QStringLiteral("/Config.ini já existe; nada foi alterado"));
    CriaBanco(pasta + QStringLiteral("/loja.db"), QStringLiteral("loja"), exemplos);
    CriaBanco(pasta + QStringLiteral("/remota.db"), QStringLiteral("remota"), false);
    CriaBanco(pasta + QStringLiteral("/Local.db"), QStringLiteral("local"), false);
    GravaRegistroEmpresa(pasta, empresaExemplo);
    Alterar(pasta, empresaExemplo.first().mid(5), hoje);
    Publica(Caminho(pasta, QStringLiteral("Config.ini")), configuracao);
}

} // namespace nfce
