#include "storage/Empresa.h"

#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"
#include "storage/Publicacao.h"

#include "storage/ErroExecucao.h"

#include <QDir>
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
QString Integridade(QByteArrayView dados) {
    if (dados.isEmpty()) return u"o arquivo está vazio"_s;
    if (!dados.endsWith('\n')) return u"o arquivo está cortado (a última linha não termina)"_s;
    return {};
}

// The record's keys, all from one reading of the file.
struct Registro {
    explicit Registro(const QString& pasta)
        : caminho(Caminho(pasta, u"Empresa.Bin"_s)), dados(BytesDoAjuste(caminho)) {}
    // The file as errors name it.
    QString Origem() const { return QDir::toNativeSeparators(caminho); }
    QString Valor(const QString& chave) const {
        return ValorDaChave(dados, chave, Cifra::Empresa, Origem());
    }
    Empresa Carrega() const {
        Empresa e;
        e.Cnpj = Valor(u"CNPJ"_s);
        e.Nome = Valor(u"NOME"_s);
        e.Serie = SerieTresDigitos(Valor(u"SERIE"_s));
        e.CodMunicipio = Valor(u"CODMUNICIPIO"_s);
        e.Ie = Valor(u"IE"_s);
        e.Endereco = Valor(u"ENDERECO"_s);
        e.Numero = Valor(u"NUMERO"_s);
        e.Complemento = Valor(u"COMPLEMENTO"_s);
        e.Bairro = Valor(u"BAIRRO"_s);
        e.Cidade = Valor(u"CIDADE"_s);
        e.Uf = Valor(u"UF"_s);
        e.Telefone = Valor(u"TELEFONE"_s);
        e.Cep = Valor(u"CEP"_s);
        return e;
    }

    QString caminho;
    QByteArray dados;
};

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
    return Registro(pasta).Carrega();
}

void VerificaEmpresa(const QString& pasta) {
    const Registro registro(pasta);
    QString problema = Integridade(registro.dados);
    if (problema.isEmpty()) problema = Problema(registro.Carrega(), registro.Valor(u"SERIE"_s));
    if (!problema.isEmpty())
        throw ErroExecucao(ErroArgumentoInvalido,
                           u"Empresa.Bin inválido: %1 (%2)"_s.arg(problema, registro.Origem()));
}

void GravaRegistroEmpresa(const QString& pasta, const QStringList& linhas) {
    QByteArray dados;
    for (const QString& linha : linhas)
        if (!Vazio(linha)) dados += CifraLinha(linha) + "\r\n";
    Publica(Caminho(pasta, u"Empresa.Bin"_s), dados);
}

QStringList DecifraRegistroEmpresa(const QString& pasta) {
    const Registro registro(pasta);
    return LinhasDoRegistro(registro.dados, registro.Origem());
}

} // namespace nfce
