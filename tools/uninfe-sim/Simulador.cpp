#include "Simulador.h"

#include "Arquivos.h"

#include <QDir>
#include <QFileInfo>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

// UniNFe's folders of one company, created as it does when a company is registered.
const QList<QStringList> kPastasDaEmpresa = {
    {u"Envio"_s},
    {u"Retorno"_s},
    {u"Erro"_s},
    {u"Validar"_s, u"Validado"_s},
    {u"Enviado"_s, u"EmProcessamento"_s},
    {u"Enviado"_s, u"Autorizados"_s},
    {u"Enviado"_s, u"Denegados"_s},
    {u"Enviado"_s, u"Originais"_s},
};

QStringList Empresas(const QString& pasta) {
    QStringList empresas;
    const QStringList filhos = QDir(pasta).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& filho : filhos) {
        const QString caminho = pasta + u'/' + filho;
        if (!NomeNoDisco(caminho, u"Envio"_s).isEmpty() ||
            !NomeNoDisco(caminho, u"Validar"_s).isEmpty())
            empresas.append(caminho);
    }
    return empresas;
}

} // namespace

QString DataHoraSefaz(const QDateTime& momento) {
    return momento.toUTC().addSecs(-3 * 3600).toString(u"yyyy-MM-ddTHH:mm:ss"_s) + u"-03:00"_s;
}

Simulador::Simulador(QString pasta, Opcoes opcoes)
    : pasta_(std::move(pasta)), opcoes_(opcoes), proximoLote_(opcoes.loteInicial) {}

void Simulador::DefineCenario(qint64 nNF, const Cenario& cenario) {
    cenarios_.insert(nNF, cenario);
}

void Simulador::DefinePadrao(const Cenario& cenario) {
    padrao_ = cenario;
}

void Simulador::DefineCenarios(const Cenarios& cenarios) {
    for (auto it = cenarios.porNumero.cbegin(); it != cenarios.porNumero.cend(); ++it)
        DefineCenario(it.key(), it.value());
    if (cenarios.padrao) DefinePadrao(*cenarios.padrao);
}

Cenario Simulador::CenarioDe(qint64 nNF) const {
    return cenarios_.value(nNF, padrao_);
}

QStringList Simulador::Processa(const QDateTime& agora) {
    ++passagem_;
    registro_.clear();
    vistosAgora_.clear();
    for (const QString& empresa : Empresas(pasta_)) {
        for (const QStringList& partes : kPastasDaEmpresa)
            Pasta(empresa, partes);
        AtendeChaves(empresa);
        AtendeConversoes(empresa, u"Validar"_s, false);
        AtendeConversoes(empresa, u"Envio"_s, true);
        AtendeEnvios(empresa, agora);
        RespondeVencidos(empresa, agora);
        AtendeSituacoes(empresa, agora);
    }
    vistos_.swap(vistosAgora_);
    return registro_;
}

bool Simulador::Pronto(const QString& arquivo) {
    if (!opcoes_.esperaArquivoEstavel) return true;
    const QFileInfo info(arquivo);
    const QPair<qint64, qint64> estado{info.size(), info.lastModified().toMSecsSinceEpoch()};
    vistosAgora_.insert(arquivo, estado);
    return vistos_.value(arquivo, {-1, -1}) == estado;
}

void Simulador::Registra(const QString& empresa, const QString& texto) {
    registro_.append(QFileInfo(empresa).fileName() + u": "_s + texto);
}

bool Simulador::Escreve(const QString& empresa, const QString& caminho,
                        const QByteArray& conteudo) {
    if (Grava(caminho, conteudo)) return true;
    Registra(empresa, u"não foi possível gravar "_s + caminho);
    return false;
}

QString Simulador::Pasta(const QString& empresa, const QStringList& partes) const {
    return uninfesim::Pasta(empresa, partes);
}

QString Simulador::Autorizados(const QString& empresa, const QString& dhEmi,
                               const QDateTime& agora) const {
    QDate data = QDate::fromString(dhEmi.left(10), u"yyyy-MM-dd"_s);
    if (!data.isValid()) data = agora.date();
    const QString mes = data.toString(opcoes_.mes == MesPasta::MA ? u"MMyyyy"_s : u"yyyyMM"_s);
    return Pasta(empresa, {u"Enviado"_s, u"Autorizados"_s, mes});
}

qint64 Simulador::ProximoLote(const QString& retorno) {
    // A lot whose answer still lies in the folder (from an earlier run) is not used again.
    const auto usado = [&](qint64 lote) {
        const QString nome = retorno + u'/' + QString::number(lote).rightJustified(15, u'0');
        return QFileInfo::exists(nome + u"-pro-rec.txt"_s) ||
               QFileInfo::exists(nome + u"-pro-rec.xml"_s) ||
               QFileInfo::exists(nome + u"-pro-rec.err"_s);
    };
    while (usado(proximoLote_))
        ++proximoLote_;
    return proximoLote_++;
}

QString Simulador::NovoProtocolo(int cUF, const QDateTime& agora) {
    return u"1"_s + QString::number(cUF).rightJustified(2, u'0') + agora.date().toString(u"yy"_s) +
           QString::number(proximoProtocolo_++).rightJustified(10, u'0');
}

QString Simulador::NovoRecibo(int cUF) {
    return QString::number(cUF).rightJustified(2, u'0') +
           QString::number(proximoRecibo_++).rightJustified(13, u'0');
}

} // namespace uninfesim
