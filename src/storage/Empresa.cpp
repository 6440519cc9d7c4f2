#include "storage/Empresa.h"

#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

#include "storage/ErroExecucao.h"

#include <QFile>
#include <QSaveFile>
#include <cmath>

namespace nfce {

namespace {
QString SerieTresDigitos(const QString& texto) {
    // The series is read as a number first, so "7", "007" and " 7x" all give "007".
    return Zeros(QVariant(std::trunc(Val(texto))), 3);
}
} // namespace

Empresa CarregaEmpresa(const QString& pasta) {
    Empresa e;
    e.Cnpj = LerEmpresa(pasta, QStringLiteral("CNPJ"));
    e.Nome = LerEmpresa(pasta, QStringLiteral("NOME"));
    e.Serie = SerieTresDigitos(LerEmpresa(pasta, QStringLiteral("SERIE")));
    e.CodMunicipio = LerEmpresa(pasta, QStringLiteral("CODMUNICIPIO"));
    e.Ie = LerEmpresa(pasta, QStringLiteral("IE"));
    e.Endereco = LerEmpresa(pasta, QStringLiteral("ENDERECO"));
    e.Numero = LerEmpresa(pasta, QStringLiteral("NUMERO"));
    e.Complemento = LerEmpresa(pasta, QStringLiteral("COMPLEMENTO"));
    e.Bairro = LerEmpresa(pasta, QStringLiteral("BAIRRO"));
    e.Cidade = LerEmpresa(pasta, QStringLiteral("CIDADE"));
    e.Uf = LerEmpresa(pasta, QStringLiteral("UF"));
    e.Telefone = LerEmpresa(pasta, QStringLiteral("TELEFONE"));
    e.Cep = LerEmpresa(pasta, QStringLiteral("CEP"));
    return e;
}

void GravaRegistroEmpresa(const QString& pasta, const QStringList& linhas) {
    QByteArray dados;
    for (const QString& linha : linhas)
        if (!Vazio(linha)) dados += CifraLinha(linha) + "\r\n";
    QSaveFile arquivo(pasta + QStringLiteral("/Empresa.Bin"));
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(dados) != dados.size() ||
        !arquivo.commit())
        throw ErroExecucao(ErroAcessoCaminho, QStringLiteral("Não foi possível gravar ") +
                                                  arquivo.fileName() + QStringLiteral(": ") +
                                                  arquivo.errorString());
}

QStringList DecifraRegistroEmpresa(const QString& pasta) {
    QFile arquivo(pasta + QStringLiteral("/Empresa.Bin"));
    if (!arquivo.open(QIODevice::ReadOnly))
        throw ErroExecucao(ErroArquivoNaoEncontrado,
                           QStringLiteral("Arquivo não encontrado: ") + arquivo.fileName());
    QStringList linhas;
    for (const QByteArray& linha : arquivo.readAll().split('\n')) {
        const QByteArray semFim = linha.endsWith('\r') ? linha.chopped(1) : linha;
        if (!semFim.isEmpty()) linhas.append(DecifraLinha(semFim));
    }
    return linhas;
}

} // namespace nfce
