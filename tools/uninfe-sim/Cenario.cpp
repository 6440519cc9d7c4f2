#include "Cenario.h"

#include <QRegularExpression>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, Desfecho> kDesfechos = {
    {u"autoriza"_s, Desfecho::Autoriza},
    {u"rejeita"_s, Desfecho::Rejeita},
    {u"duplicidade"_s, Desfecho::Duplicidade},
    {u"duplicidade-chave"_s, Desfecho::DuplicidadeChave},
    {u"erro-conversao"_s, Desfecho::ErroConversao},
    {u"lote-recusado"_s, Desfecho::LoteRecusado},
    {u"rejeita-lote"_s, Desfecho::RejeitaLote},
    {u"sem-resposta"_s, Desfecho::SemResposta},
};

const QHash<QString, RespostaChave> kChaves = {
    {u"chave-txt"_s, RespostaChave::Texto},
    {u"chave-zero"_s, RespostaChave::Zero},
    {u"sem-chave"_s, RespostaChave::Nenhuma},
};

bool Codigo(const QString& palavra, int& codigo) {
    static const QRegularExpression tres(u"^[1-9]\\d\\d$"_s);
    if (!tres.match(palavra).hasMatch()) return false;
    codigo = palavra.toInt();
    return true;
}

bool Numero(const QString& palavra, int& valor) {
    bool ok = false;
    valor = palavra.toInt(&ok);
    return ok && valor >= 0 && palavra.size() <= 6;
}

class Leitor {
public:
    explicit Leitor(const QString& texto) : palavras_(texto.split(u' ', Qt::SkipEmptyParts)) {
        static const QRegularExpression palavra(u"(^| )motivo( |$)"_s,
                                                QRegularExpression::CaseInsensitiveOption);
        const qsizetype motivo = texto.indexOf(palavra);
        if (motivo >= 0) {
            palavras_ = texto.left(motivo).split(u' ', Qt::SkipEmptyParts);
            motivo_ = texto.mid(motivo).trimmed().mid(6).trimmed();
        }
    }

    bool Le(Cenario& c, QString& erro) {
        bool temDesfecho = false;
        for (i_ = 0; i_ < palavras_.size(); ++i_) {
            const QString p = palavras_.at(i_).toLower();
            if (kDesfechos.contains(p)) {
                if (temDesfecho) return Falha(erro, u"mais de um desfecho: "_s + p);
                temDesfecho = true;
                c.desfecho = kDesfechos.value(p);
                if (!LeCodigo(c, erro)) return false;
            } else if (kChaves.contains(p)) {
                c.chave = kChaves.value(p);
            } else if (p == u"sem-procnfe"_s) {
                c.semProcNFe = true;
            } else if (p == u"chave-falsa"_s || p == u"protocolo-chave"_s) {
                const QString texto = Proxima();
                if (texto.isEmpty()) return Falha(erro, p + u" sem texto"_s);
                (p == u"chave-falsa"_s ? c.chaveFalsa : c.chaveNoProtocolo) = texto;
            } else if (p == u"item"_s) {
                if (!Numero(Proxima(), c.item)) return Falha(erro, u"item sem número"_s);
            } else if (p == u"atraso"_s) {
                if (!LeAtraso(c)) return Falha(erro, u"atraso sem número"_s);
            } else {
                return Falha(erro, u"palavra desconhecida: "_s + palavras_.at(i_));
            }
        }
        if (motivo_) c.motivo = motivo_;
        return true;
    }

private:
    QString Proxima() { return ++i_ < palavras_.size() ? palavras_.at(i_) : QString(); }

    static bool Falha(QString& erro, const QString& texto) {
        erro = texto;
        return false;
    }

    bool LeCodigo(Cenario& c, QString& erro) {
        if (c.desfecho == Desfecho::Rejeita) {
            if (!Codigo(Proxima(), c.codigo)) return Falha(erro, u"rejeita sem código"_s);
        } else if (c.desfecho == Desfecho::RejeitaLote) {
            c.codigo = 225;
            if (i_ + 1 < palavras_.size() && Codigo(palavras_.at(i_ + 1), c.codigo)) ++i_;
        }
        return true;
    }

    bool LeAtraso(Cenario& c) {
        QString valor = Proxima();
        const bool segundos = valor.endsWith(u's', Qt::CaseInsensitive);
        if (segundos) valor.chop(1);
        return Numero(valor, segundos ? c.atrasoSegundos : c.atrasoPassagens);
    }

    QStringList palavras_;
    std::optional<QString> motivo_;
    qsizetype i_ = 0;
};

} // namespace

Cenario Cenario::Rejeicao(int codigo, int item) {
    Cenario c;
    c.desfecho = Desfecho::Rejeita;
    c.codigo = codigo;
    c.item = item;
    return c;
}

Cenario Cenario::De(Desfecho desfecho) {
    Cenario c;
    c.desfecho = desfecho;
    if (desfecho == Desfecho::RejeitaLote) c.codigo = 225;
    return c;
}

bool LeCenario(const QString& palavras, Cenario& cenario, QString& erro) {
    Cenario lido;
    if (!Leitor(QString(palavras).replace(u'\t', u' ')).Le(lido, erro)) return false;
    cenario = lido;
    return true;
}

Cenarios LeCenarios(const QString& texto) {
    Cenarios cenarios;
    const QStringList linhas = texto.split(u'\n');
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        const QString linha = linhas.at(i).trimmed();
        if (linha.isEmpty() || linha.startsWith(u'#')) continue;
        const QString onde = u"linha "_s + QString::number(i + 1) + u": "_s;
        const qsizetype igual = linha.indexOf(u'=');
        const QString chave = linha.left(igual).trimmed();
        bool numero = false;
        const qint64 nNF = chave.toLongLong(&numero);
        Cenario cenario;
        QString erro;
        if (igual < 0 || (!numero && chave.toLower() != u"padrao"_s) || nNF < 0)
            cenarios.erros.append(onde + u"esperado NUMERO=desfecho"_s);
        else if (!LeCenario(linha.mid(igual + 1), cenario, erro))
            cenarios.erros.append(onde + erro);
        else if (numero)
            cenarios.porNumero.insert(nNF, cenario);
        else
            cenarios.padrao = cenario;
    }
    return cenarios;
}

} // namespace uninfesim
