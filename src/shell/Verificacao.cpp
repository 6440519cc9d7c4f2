#include "shell/Verificacao.h"

#include "platform/AmbienteQt.h"
#include "storage/Ajustes.h"
#include "storage/Conexoes.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void BancoInvalido(const QString& pasta, int numero, const QString& problema) {
    throw ErroExecucao(
        numero, u"Banco de dados \"%1\" (%2 em Config.ini): %3"_s.arg(
                    Le(pasta, ajustes::BaseDados).left(200), Chave(ajustes::BaseDados), problema));
}

void VerificaBanco(const QString& pasta) {
    AmbienteQt ambiente;
    std::shared_ptr<Conexao> banco;
    try {
        banco = Conexoes(pasta, ambiente).CriaPrincipal(Conexao::Arquivo::SoLeitura);
    } catch (const ErroExecucao& erro) {
        throw ErroExecucao(erro.numero(), u"Config.ini: "_s + erro.descricao());
    }
    try {
        banco->Abre();
    } catch (const ErroExecucao& erro) {
        BancoInvalido(pasta, erro.numero(), erro.descricao());
    }
    const QStringList faltando = TabelasFaltando(*banco, u"loja"_s);
    banco->Fecha();
    if (!faltando.isEmpty())
        BancoInvalido(pasta, ErroProvedor, u"faltam as tabelas "_s + faltando.join(u", "_s));
}

} // namespace

void VerificaInstalacao(const QString& pasta) {
    VerificaEmpresa(pasta);
    VerificaBanco(pasta);
}

} // namespace nfce
