#include "storage/Registros.h"

#include "storage/ErroExecucao.h"

#include <QDateTime>
#include <QLocale>

namespace nfce {

namespace {

// The recordset was opened for reading only.
constexpr int ErroSomenteLeitura = 3251;

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

[[noreturn]] void SemChave() {
    throw ErroExecucao(ErroProvedor, QStringLiteral("Informações de coluna de chave "
                                                    "insuficientes para atualizar ou renovar."));
}

} // namespace

void Registros::AbreConsulta(Conexao& conexao, const QString& sql) {
    Fecha();
    Abre(conexao.Consulta(sql));
}

void Registros::AbreTabela(std::shared_ptr<Conexao> conexao, const QString& tabela) {
    Fecha();
    Resultado linhas =
        conexao->Consulta(QStringLiteral("SELECT * FROM ") + conexao->Identificador(tabela));
    chave_ = conexao->ChavePrimaria(tabela);
    Abre(std::move(linhas));
    conexao_ = std::move(conexao);
    tabela_ = tabela;
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
    conexao_.reset();
    tabela_.clear();
    chave_.clear();
    novo_ = false;
    definidos_.clear();
    original_.clear();
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
    Update();
    posicao_ = 0;
}

void Registros::MoveNext() {
    ExigeAberto();
    Update();
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

void Registros::ExigeTabela() const {
    ExigeAberto();
    if (!conexao_)
        throw ErroExecucao(ErroSomenteLeitura,
                           QStringLiteral("O recordset atual não oferece suporte para "
                                          "atualização."));
}

void Registros::AddNew() {
    ExigeTabela();
    Update();
    dados_.linhas.append(QVariantList(dados_.campos.size()));
    posicao_ = dados_.linhas.size() - 1;
    novo_ = true;
}

void Registros::Define(const QString& nome, const QVariant& valor) {
    const int coluna = Coluna(nome);
    ExigeTabela();
    ExigeRegistroAtual();
    if (!novo_ && definidos_.isEmpty()) original_ = dados_.linhas[posicao_];
    dados_.linhas[posicao_][coluna] = valor;
    if (!definidos_.contains(coluna)) definidos_.append(coluna);
}

void Registros::Update() {
    ExigeAberto();
    if (!novo_ && definidos_.isEmpty()) return;
    if (novo_)
        Insere();
    else
        Altera();
    novo_ = false;
    definidos_.clear();
    original_.clear();
}

QString Registros::Tabela() const {
    return conexao_->Identificador(tabela_);
}

void Registros::Insere() {
    QStringList nomes;
    QStringList marcas;
    QVariantList valores;
    for (int coluna : definidos_) {
        nomes.append(conexao_->Identificador(dados_.campos[coluna]));
        marcas.append(QStringLiteral("?"));
        valores.append(dados_.linhas[posicao_][coluna]);
    }
    conexao_->ExecutaComValores(
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
            .arg(Tabela(), nomes.join(QStringLiteral(", ")), marcas.join(QStringLiteral(", "))),
        valores);
    // A key the database generated becomes visible in the new row.
    if (chave_.size() != 1) return;
    const int coluna = colunas_.value(chave_.first().toLower(), -1);
    if (coluna < 0 || !dados_.linhas[posicao_][coluna].isNull()) return;
    const qlonglong id = conexao_->UltimoIdInserido();
    if (id > 0) dados_.linhas[posicao_][coluna] = id;
}

void Registros::Altera() {
    if (chave_.isEmpty()) SemChave();
    QStringList atribuicoes;
    QStringList condicoes;
    QVariantList valores;
    for (int coluna : definidos_) {
        atribuicoes.append(conexao_->Identificador(dados_.campos[coluna]) + QStringLiteral(" = ?"));
        valores.append(dados_.linhas[posicao_][coluna]);
    }
    for (const QString& campo : chave_) {
        const int coluna = colunas_.value(campo.toLower(), -1);
        if (coluna < 0) SemChave();
        condicoes.append(conexao_->Identificador(campo) + QStringLiteral(" = ?"));
        valores.append(original_.value(coluna));
    }
    const int alteradas =
        conexao_->ExecutaComValores(QStringLiteral("UPDATE %1 SET %2 WHERE %3")
                                        .arg(Tabela(), atribuicoes.join(QStringLiteral(", ")),
                                             condicoes.join(QStringLiteral(" AND "))),
                                    valores);
    if (alteradas == 0)
        throw ErroExecucao(ErroProvedor,
                           QStringLiteral("Não foi possível localizar a linha para atualização. "
                                          "Alguns valores podem ter sido alterados desde a "
                                          "última leitura."));
}

} // namespace nfce
