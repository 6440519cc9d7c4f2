#include "storage/Registros.h"

#include "storage/ErroExecucao.h"

#include <QDateTime>
#include <QLocale>

namespace nfce {

namespace {

QString TextoDe(const QVariant& valor) {
    if (valor.isNull()) return {};
    switch (valor.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        const double numero = valor.toDouble();
        return numero == 0 ? QStringLiteral("0")
                           : QString::number(numero, 'f', QLocale::FloatingPointShortest);
    }
    case QMetaType::Bool:
        return valor.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::QDate:
        return valor.toDate().toString(QStringLiteral("yyyy-MM-dd"));
    case QMetaType::QTime:
        return valor.toTime().toString(QStringLiteral("HH:mm:ss"));
    case QMetaType::QDateTime:
        return valor.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QByteArray:
        return QString::fromUtf8(valor.toByteArray());
    default:
        return valor.toString();
    }
}

QDate DataDe(const QVariant& valor) {
    if (valor.isNull()) return {};
    if (valor.typeId() == QMetaType::QDate) return valor.toDate();
    if (valor.typeId() == QMetaType::QDateTime) return valor.toDateTime().date();
    const QString texto = valor.toString().trimmed().left(10);
    const QDate data = QDate::fromString(texto, QStringLiteral("yyyy-MM-dd"));
    return data.isValid() ? data : QDate::fromString(texto, QStringLiteral("dd/MM/yyyy"));
}

QTime HoraDe(const QVariant& valor) {
    if (valor.isNull()) return {};
    if (valor.typeId() == QMetaType::QTime) return valor.toTime();
    if (valor.typeId() == QMetaType::QDateTime) return valor.toDateTime().time();
    // A date and time text gives its time part.
    const QString texto = valor.toString().trimmed().section(u' ', -1);
    return QTime::fromString(texto, Qt::ISODate);
}

} // namespace

void Registros::AbreConsulta(Conexao& conexao, const QString& sql) {
    Fecha();
    Abre(conexao.Consulta(sql));
}

void Registros::AbreTabela(const std::shared_ptr<Conexao>& conexao, const QString& tabela) {
    Fecha();
    Abre(conexao->Consulta(QStringLiteral("SELECT * FROM ") + conexao->Identificador(tabela)));
}

void Registros::Abre(Resultado resultado) {
    dados_ = std::move(resultado);
    for (int i = 0; i < dados_.campos.size(); ++i) {
        const QString nome = dados_.campos[i].toLower();
        if (!colunas_.contains(nome)) colunas_.insert(nome, i);
    }
    posicao_ = 0;
    aberto_ = true;
}

void Registros::Fecha() {
    dados_ = {};
    colunas_.clear();
    posicao_ = 0;
    aberto_ = false;
}

void Registros::ExigeAberto() const {
    if (!aberto_)
        throw ErroExecucao(ErroObjetoFechado,
                           QStringLiteral("A operação não é permitida quando o objeto está "
                                          "fechado."));
}

bool Registros::Eof() const {
    ExigeAberto();
    return posicao_ >= dados_.linhas.size();
}

void Registros::ExigeRegistroAtual() const {
    if (Eof())
        throw ErroExecucao(ErroSemRegistroAtual,
                           QStringLiteral("BOF ou EOF é verdadeiro, ou o registro atual foi "
                                          "excluído. A operação solicitada requer um registro "
                                          "atual."));
}

int Registros::RecordCount() const {
    ExigeAberto();
    return static_cast<int>(dados_.linhas.size());
}

void Registros::MoveFirst() {
    ExigeAberto();
    posicao_ = 0;
}

void Registros::MoveNext() {
    ExigeRegistroAtual();
    ++posicao_;
}

QStringList Registros::Campos() const {
    ExigeAberto();
    return dados_.campos;
}

int Registros::Coluna(const QString& nome) const {
    ExigeAberto();
    const auto coluna = colunas_.constFind(nome.toLower());
    if (coluna == colunas_.cend())
        throw ErroExecucao(ErroItemNaoEncontrado,
                           QStringLiteral("O item não pode ser encontrado na coleção "
                                          "correspondente ao nome solicitado: %1")
                               .arg(nome));
    return *coluna;
}

const QVariantList& Registros::LinhaAtual() const {
    ExigeRegistroAtual();
    return dados_.linhas[posicao_];
}

QVariant Registros::Campo(const QString& nome) const {
    const int coluna = Coluna(nome);
    return LinhaAtual().value(coluna);
}

QString Registros::Texto(const QString& nome) const {
    return TextoDe(Campo(nome));
}

QDate Registros::Data(const QString& nome) const {
    return DataDe(Campo(nome));
}

QTime Registros::Hora(const QString& nome) const {
    return HoraDe(Campo(nome));
}

} // namespace nfce
