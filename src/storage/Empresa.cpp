#include "storage/Empresa.h"

#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"
#include "storage/Publicacao.h"

#include "storage/ErroExecucao.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {
QString SerieTresDigitos(const QString& texto) {
    // The series is read as a number first, so "7", "007" and " 7x" all give "007".
    return Zeros(QVariant(std::trunc(Val(texto))), 3);
}

bool SoDigitos(const QString& texto) {
    return std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// Modulo 11 over the digits, weights 2 to 9 from the right.
int DigitoCnpj(const QString& digitos) {
    int soma = 0;
    for (qsizetype i = 0; i < digitos.size(); ++i)
        soma += digitos[digitos.size() - 1 - i].digitValue() * (2 + i % 8);
    return soma % 11 < 2 ? 0 : 11 - soma % 11;
}

bool CnpjValido(const QString& cnpj) {
    if (cnpj.size() != 14 || !SoDigitos(cnpj) || cnpj.count(cnpj[0]) == 14) return false;
    return DigitoCnpj(cnpj.left(12)) == cnpj[12].digitValue() &&
           DigitoCnpj(cnpj.left(13)) == cnpj[13].digitValue();
}

qsizetype Digitos(const QString& texto) {
    return std::count_if(texto.begin(), texto.end(), [](QChar c) { return c.isDigit(); });
}

bool UfValida(const QString& uf) {
    static const QStringList ufs = u"AC AL AP AM BA CE DF ES GO MA MT MS MG PA PB PR PE PI RJ RN "
                                   u"RS RO RR SC SP SE TO"_s.split(u' ');
    return ufs.contains(uf.toUpper());
}

// Every line of the record ends with CR LF: a file that does not was cut while written.
// "" also when the file cannot be read, which the reader reports itself.
QString Integridade(const QString& caminho) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) return {};
    if (arquivo.size() == 0) return u"o arquivo está vazio"_s;
    if (!arquivo.seek(arquivo.size() - 1) || arquivo.read(1) != "\n")
        return u"o arquivo está cortado (a última linha não termina)"_s;
    return {};
}

// What makes the record unfit for documents; "" when nothing does.
QString Problema(const Empresa& e, const QString& serie) {
    if (!CnpjValido(e.Cnpj))
        return u"CNPJ inválido: \"%1\" (14 dígitos, com dígitos verificadores válidos)"_s.arg(
            e.Cnpj.left(40));
    const std::pair<const char*, const QString*> obrigatorios[] = {
        {"NOME", &e.Nome},         {"SERIE", &serie},     {"CODMUNICIPIO", &e.CodMunicipio},
        {"ENDERECO", &e.Endereco}, {"NUMERO", &e.Numero}, {"BAIRRO", &e.Bairro},
        {"CIDADE", &e.Cidade},     {"UF", &e.Uf},         {"CEP", &e.Cep}};
    for (const auto& [chave, valor] : obrigatorios)
        if (Vazio(*valor)) return u"falta %1"_s.arg(QLatin1String(chave));
    if (e.CodMunicipio.size() != 7 || !SoDigitos(e.CodMunicipio))
        return u"CODMUNICIPIO inválido: \"%1\" (7 dígitos)"_s.arg(e.CodMunicipio.left(40));
    if (!UfValida(e.Uf)) return u"UF inválida: \"%1\""_s.arg(e.Uf.left(40));
    if (Digitos(e.Cep) != 8) return u"CEP inválido: \"%1\" (8 dígitos)"_s.arg(e.Cep.left(40));
    return {};
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

void VerificaEmpresa(const QString& pasta) {
    const QString caminho = Caminho(pasta, u"Empresa.Bin"_s);
    QString problema = Integridade(caminho);
    if (problema.isEmpty())
        problema = Problema(CarregaEmpresa(pasta), LerEmpresa(pasta, u"SERIE"_s));
    if (!problema.isEmpty())
        throw ErroExecucao(ErroArgumentoInvalido, u"Empresa.Bin inválido: %1 (%2)"_s.arg(
                                                      problema, QDir::toNativeSeparators(caminho)));
}

void GravaRegistroEmpresa(const QString& pasta, const QStringList& linhas) {
    QByteArray dados;
    for (const QString& linha : linhas)
        if (!Vazio(linha)) dados += CifraLinha(linha) + "\r\n";
    Publica(Caminho(pasta, u"Empresa.Bin"_s), dados);
}

QStringList DecifraRegistroEmpresa(const QString& pasta) {
    const QString caminho = Caminho(pasta, u"Empresa.Bin"_s);
    return LinhasDoRegistro(BytesDoAjuste(caminho), QDir::toNativeSeparators(caminho));
}

} // namespace nfce
