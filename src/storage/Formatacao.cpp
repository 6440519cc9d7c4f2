#include "storage/Formatacao.h"

#include "storage/Configuracao.h"
#include "storage/ErroExecucao.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

using namespace Qt::Literals::StringLiterals;

namespace nfce {

namespace {

// |valor| = 0.digitos x 10^inteiros; digitos has no leading zeros ("" for zero).
struct Decimal {
    bool negativo = false;
    std::string digitos;
    int inteiros = 0;
};

// A finite double through its shortest round-trip form, "d.ddde+XX".
Decimal decompoe(double valor) {
    char texto[64];
    const auto fim =
        std::to_chars(texto, texto + sizeof texto, std::fabs(valor), std::chars_format::scientific)
            .ptr;
    const std::string_view cientifico(texto, fim - texto);
    const auto e = cientifico.find('e');
    Decimal d;
    d.negativo = std::signbit(valor);
    for (const char c : cientifico.substr(0, e))
        if (c != '.') d.digitos += c;
    auto expoente = cientifico.substr(e + 1);
    if (expoente.front() == '+') expoente.remove_prefix(1);
    std::from_chars(expoente.data(), expoente.data() + expoente.size(), d.inteiros);
    ++d.inteiros;
    if (d.digitos == "0") d = Decimal{d.negativo, {}, 0};
    return d;
}

Decimal decompoe(Moeda valor) {
    const qint64 unidades = valor.unidades();
    const quint64 modulo = unidades < 0 ? 0 - static_cast<quint64>(unidades) : unidades;
    Decimal d;
    d.negativo = unidades < 0;
    if (modulo == 0) return d;
    d.digitos = std::to_string(modulo);
    d.inteiros = static_cast<int>(d.digitos.size()) - 4;
    return d;
}

// Integer and fraction digits after rounding; inteiro has no leading zeros.
struct Arredondado {
    bool negativo = false;
    std::string inteiro;
    std::string fracao;
};

void somaUmNaUltimaCasa(std::string& digitos, int& inteiros) {
    auto i = digitos.size();
    while (i > 0 && digitos[i - 1] == '9')
        digitos[--i] = '0';
    if (i > 0) {
        ++digitos[i - 1];
    } else {
        digitos.insert(digitos.begin(), '1');
        ++inteiros;
    }
}

// Half away from zero: the first digit dropped decides.
Arredondado arredonda(const Decimal& d, int casas) {
    std::string digitos = d.digitos;
    int inteiros = d.inteiros;
    const long long mantidos = static_cast<long long>(inteiros) + casas;
    if (mantidos < 0) {
        digitos.clear();
    } else if (mantidos < static_cast<long long>(digitos.size())) {
        const bool sobe = digitos[mantidos] >= '5';
        digitos.resize(mantidos);
        if (sobe) somaUmNaUltimaCasa(digitos, inteiros);
    }
    const bool zero = digitos.find_first_not_of('0') == std::string::npos;
    if (zero) inteiros = 0;
    std::string todos = inteiros < 0 ? std::string(-inteiros, '0') + digitos : digitos;
    const int posicaoPonto = std::max(inteiros, 0);
    todos.resize(posicaoPonto + casas, '0');
    return {d.negativo && !zero, todos.substr(0, posicaoPonto), todos.substr(posicaoPonto)};
}

QString textoNaoFinito(double valor) {
    if (std::isnan(valor)) return u"nan"_s;
    return valor < 0 ? u"-inf"_s : u"inf"_s;
}

struct Padrao {
    int minInteiros = 0;
    int minDecimais = 0;
    int maxDecimais = 0;
    bool agrupa = false;
    bool temPonto = false;
};

[[noreturn]] void padraoInvalido(const QString& padrao) {
    throw ErroExecucao(ErroArgumentoInvalido,
                       u"Padrão numérico não suportado: \""_s + padrao + u'"');
}

Padrao lePadrao(const QString& padrao) {
    Padrao p;
    bool viuZero = false;
    bool viuDigito = false;
    for (const QChar c : padrao) {
        if (c == u'.') {
            if (p.temPonto) padraoInvalido(padrao);
            p.temPonto = true;
        } else if (c == u',') {
            p.agrupa = true;
        } else if (c == u'0' || c == u'#') {
            viuDigito = true;
            if (p.temPonto) {
                ++p.maxDecimais;
                if (c == u'0') p.minDecimais = p.maxDecimais;
            } else {
                viuZero = viuZero || c == u'0';
                if (viuZero) ++p.minInteiros;
            }
        } else {
            padraoInvalido(padrao);
        }
    }
    if (!viuDigito) padraoInvalido(padrao);
    return p;
}

std::string agrupaMilhares(const std::string& inteiro) {
    std::string agrupado;
    for (std::size_t i = 0; i < inteiro.size(); ++i) {
        if (i > 0 && (inteiro.size() - i) % 3 == 0) agrupado += '.';
        agrupado += inteiro[i];
    }
    return agrupado;
}

QString aplicaPadrao(Arredondado r, const Padrao& p) {
    if (static_cast<int>(r.inteiro.size()) < p.minInteiros)
        r.inteiro.insert(0, p.minInteiros - r.inteiro.size(), '0');
    if (p.agrupa) r.inteiro = agrupaMilhares(r.inteiro);
    while (static_cast<int>(r.fracao.size()) > p.minDecimais && r.fracao.back() == '0')
        r.fracao.pop_back();
    std::string texto = r.negativo ? "-" : "";
    texto += r.inteiro;
    if (p.temPonto) texto += ',' + r.fracao;
    return QString::fromLatin1(texto);
}

// Plain notation between 1e-6 and 1e21, exponent form outside.
QString textoCurto(const Decimal& d) {
    if (d.digitos.empty()) return u"0"_s;
    std::string texto = d.negativo ? "-" : "";
    const int n = static_cast<int>(d.digitos.size());
    if (d.inteiros >= -5 && d.inteiros <= 21) {
        if (d.inteiros <= 0)
            texto += "0." + std::string(-d.inteiros, '0') + d.digitos;
        else if (d.inteiros >= n)
            texto += d.digitos + std::string(d.inteiros - n, '0');
        else
            texto += d.digitos.substr(0, d.inteiros) + '.' + d.digitos.substr(d.inteiros);
    } else {
        texto += d.digitos.substr(0, 1);
        if (n > 1) texto += '.' + d.digitos.substr(1);
        texto += (d.inteiros > 0 ? "e+" : "e") + std::to_string(d.inteiros - 1);
    }
    return QString::fromLatin1(texto);
}

// Reads a text one character at a time, skipping what Val ignores.
class Leitor {
public:
    explicit Leitor(const QString& texto) : texto_(texto) { pulaBrancos(); }
    char16_t atual() const { return i_ < texto_.size() ? texto_[i_].unicode() : u'\0'; }
    void avanca() {
        ++i_;
        pulaBrancos();
    }
    bool ehDigito() const { return atual() >= u'0' && atual() <= u'9'; }

private:
    void pulaBrancos() {
        while (atual() == u' ' || atual() == u'\t' || atual() == u'\n')
            ++i_;
    }
    const QString& texto_;
    qsizetype i_ = 0;
};

int digitoNaBase(char16_t c, int base) {
    int digito = base;
    if (c >= u'0' && c <= u'9') digito = c - u'0';
    if (c >= u'A' && c <= u'F') digito = c - u'A' + 10;
    if (c >= u'a' && c <= u'f') digito = c - u'a' + 10;
    return digito < base ? digito : -1;
}

double leInteiroNaBase(Leitor& leitor, int base) {
    double valor = 0;
    for (int d; (d = digitoNaBase(leitor.atual(), base)) >= 0; leitor.avanca())
        valor = valor * base + d;
    // Constants that fit an Integer or a Long are signed, as BASIC reads them.
    if (valor <= 0xFFFF) return static_cast<qint16>(static_cast<quint16>(valor));
    if (valor <= 0xFFFFFFFFu) return static_cast<qint32>(static_cast<quint32>(valor));
    return valor;
}

long long leExpoente(Leitor& leitor, bool& temExpoente) {
    const char16_t letra = leitor.atual();
    if (letra != u'E' && letra != u'e' && letra != u'D' && letra != u'd') return 0;
    leitor.avanca();
    const bool negativo = leitor.atual() == u'-';
    if (leitor.atual() == u'-' || leitor.atual() == u'+') leitor.avanca();
    long long expoente = 0;
    for (; leitor.ehDigito(); leitor.avanca()) {
        temExpoente = true;
        expoente = std::min(expoente * 10 + (leitor.atual() - u'0'), 1'000'000'000LL);
    }
    return negativo ? -expoente : expoente;
}

double leDecimal(Leitor& leitor) {
    const bool negativo = leitor.atual() == u'-';
    if (leitor.atual() == u'-' || leitor.atual() == u'+') leitor.avanca();
    std::string numero;
    long long ordem = 0; // position of the first significant digit, to tell overflow apart
    bool significativo = false;
    for (; leitor.ehDigito(); leitor.avanca()) {
        significativo = significativo || leitor.atual() != u'0';
        if (significativo) ++ordem;
        numero += static_cast<char>(leitor.atual());
    }
    if (leitor.atual() == u'.') {
        leitor.avanca();
        if (leitor.ehDigito()) numero += '.';
        for (; leitor.ehDigito(); leitor.avanca()) {
            if (!significativo && leitor.atual() == u'0') --ordem;
            significativo = significativo || leitor.atual() != u'0';
            numero += static_cast<char>(leitor.atual());
        }
    }
    if (numero.empty()) return 0;
    bool temExpoente = false;
    const long long expoente = leExpoente(leitor, temExpoente);
    if (temExpoente) numero += 'e' + std::to_string(expoente);
    double valor = 0;
    if (std::from_chars(numero.data(), numero.data() + numero.size(), valor).ec ==
        std::errc::result_out_of_range)
        valor = ordem + expoente > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negativo ? -valor : valor;
}

bool ehTexto(const QVariant& valor) {
    const int tipo = valor.typeId();
    return tipo == QMetaType::QString || tipo == QMetaType::QByteArray || tipo == QMetaType::QChar;
}

QString textoDe(const QVariant& valor) {
    const int tipo = valor.typeId();
    if (tipo == QMetaType::Double || tipo == QMetaType::Float) return TextoNumero(valor.toDouble());
    return valor.toString();
}

QString formataVariante(const QVariant& valor, const QString& padrao) {
    if (ehTexto(valor)) return FormataNumero(LeValor(valor.toString()), padrao);
    return FormataNumero(valor.toDouble(), padrao);
}

double arredondaParaPar(double x) {
    const double piso = std::floor(x);
    const double resto = x - piso;
    if (resto != 0.5) return resto < 0.5 ? piso : piso + 1;
    return std::fmod(piso, 2.0) == 0 ? piso : piso + 1;
}

QString comPontos(QString texto) {
    return texto.replace(u',', u'.');
}

QString padraoMoeda() {
    return u"0.00"_s;
}
QString padraoQuantidade() {
    return u"#,###0.000"_s;
}

} // namespace

bool EhNumero(const QVariant& valor) {
    switch (valor.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

qint64 InteiroDe(const QVariant& valor) {
    if (valor.isNull()) return 0;
    if (valor.typeId() == QMetaType::LongLong || valor.typeId() == QMetaType::Int)
        return valor.toLongLong();
    const QString texto = valor.toString();
    const double inteiro = std::trunc(EhNumero(valor) ? valor.toDouble() : Val(texto));
    // 2^63 itself does not fit; every double below it does.
    if (!(std::fabs(inteiro) < 9223372036854775808.0))
        throw ErroExecucao(
            ErroEstouro,
            QStringLiteral("Estouro: \"%1\" não é um número inteiro válido").arg(texto.left(40)));
    return static_cast<qint64>(inteiro);
}

std::optional<qint64> NumeroEstrito(const QString& texto, qint64 maximo) {
    const bool soDigitos = !texto.isEmpty() && std::all_of(texto.begin(), texto.end(), [](QChar c) {
        return c >= u'0' && c <= u'9';
    });
    bool ok = false;
    const qint64 numero = texto.toLongLong(&ok);
    if (!soDigitos || !ok || numero < 1 || numero > maximo) return std::nullopt;
    return numero;
}

double Val(const QString& texto) {
    Leitor leitor(texto);
    double valor = 0;
    if (leitor.atual() == u'&') {
        leitor.avanca();
        const char16_t base = leitor.atual();
        leitor.avanca();
        if (base == u'H' || base == u'h') valor = leInteiroNaBase(leitor, 16);
        if (base == u'O' || base == u'o') valor = leInteiroNaBase(leitor, 8);
    } else {
        valor = leDecimal(leitor);
    }
    return valor == 0 ? 0.0 : valor;
}

qint16 Inteiro16(const QString& texto, const QString& oQue) {
    const double valor = std::nearbyint(Val(texto));
    if (!(valor >= std::numeric_limits<qint16>::min() &&
          valor <= std::numeric_limits<qint16>::max()))
        throw ErroExecucao(
            ErroEstouro,
            u"Estouro: %1 \"%2\" não cabe num inteiro de 16 bits."_s.arg(oQue, texto.left(40)));
    return static_cast<qint16>(valor);
}

QString FormataNumero(double valor, const QString& padrao) {
    const Padrao p = lePadrao(padrao);
    if (!std::isfinite(valor)) return textoNaoFinito(valor);
    return aplicaPadrao(arredonda(decompoe(valor), p.maxDecimais), p);
}

QString FormataNumero(Moeda valor, const QString& padrao) {
    const Padrao p = lePadrao(padrao);
    return aplicaPadrao(arredonda(decompoe(valor), p.maxDecimais), p);
}

QString TextoDecimal(double valor, int casas) {
    if (!std::isfinite(valor)) return textoNaoFinito(valor);
    casas = std::max(casas, 0);
    const Arredondado r = arredonda(decompoe(valor), casas);
    std::string texto = r.negativo ? "-" : "";
    texto += r.inteiro.empty() ? "0" : r.inteiro;
    if (casas > 0) texto += '.' + r.fracao;
    return QString::fromLatin1(texto);
}

QString TextoNumero(double valor) {
    if (!std::isfinite(valor)) return textoNaoFinito(valor);
    return textoCurto(decompoe(valor));
}

QString DataMySQL(const QDate& data) {
    return data.toString(u"yyyy-MM-dd");
}

Moeda ValorMoeda(double valor) {
    // inf and nan have no digits to read back: Moeda raises its range error for them.
    if (!std::isfinite(valor)) return Moeda(valor);
    QString texto = FormataNumero(valor, padraoMoeda());
    const qsizetype virgula = texto.indexOf(u',');
    if (virgula >= 0) texto[virgula] = u'.';
    return Moeda(Val(texto));
}

QString FormataValor(double valor) {
    return FormataNumero(valor, u"#,##0.00"_s);
}

QString ValorPonto(const QVariant& valor) {
    return comPontos(formataVariante(valor, padraoMoeda()));
}

QString ValorPonto(Moeda valor) {
    return comPontos(FormataNumero(valor, padraoMoeda()));
}

QString QuantPonto(double valor) {
    return comPontos(FormataNumero(valor, padraoQuantidade()));
}

QString QuantPonto(const QVariant& valor) {
    return comPontos(formataVariante(valor, padraoQuantidade()));
}

double Arredonda(double valor, int casas) {
    const double escala = std::pow(10.0, casas);
    return std::floor(valor * escala + 0.5) / escala;
}

double Trunca(double valor, int casas) {
    const double escala = std::pow(10.0, casas);
    const double umaCasa = arredondaParaPar(valor * escala * 10) / 10;
    return std::floor(umaCasa) / escala;
}

Moeda LeValor(const QString& texto) {
    QString t = texto;
    // Commas become points only within the first Apara(texto).size() characters: with
    // leading blanks, a comma near the end stays and ends the number.
    const qsizetype alcance = Apara(texto).size();
    for (qsizetype i = 0; i < alcance; ++i)
        if (t[i] == u',') t[i] = u'.';
    qsizetype pontos = t.count(u'.');
    // Points go from the left until one is left; the character that slides into a
    // removed point's place is passed over by the scan.
    QString lido;
    lido.reserve(t.size());
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (pontos > 1 && t[i] == u'.') {
            --pontos;
            if (++i == t.size()) break;
        }
        lido += t[i];
    }
    return Moeda(Val(lido));
}

QString TiraAspas(const QVariant& valor) {
    if (valor.isNull()) return {};
    return Apara(Apara(textoDe(valor)).remove(u'\''));
}

QString LimpaTexto(const QVariant& valor) {
    if (valor.isNull()) return {};
    QString texto = Apara(textoDe(valor));
    texto.removeIf([](QChar c) { return QStringView(u" ().-/_,").contains(c); });
    return texto;
}

QString Zeros(const QVariant& valor, int tamanho) {
    return Apara(textoDe(valor)).rightJustified(tamanho, u'0');
}

} // namespace nfce
