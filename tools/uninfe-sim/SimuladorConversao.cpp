// Documents in the text layout: "<name>-nfe.txt" in Validar (converted and validated, not
// sent) or in Envio (converted and then sent).
#include "Arquivos.h"
#include "LeituraTxt.h"
#include "Simulador.h"
#include "XmlNota.h"

#include <QFileInfo>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

// The complaint of a scenario that wants the conversion to fail: the first item's NCM, as
// UniNFe words a missing field.
QString FalhaDoCenario(const NotaTxt& nota) {
    Registro r = nota.Primeiro(u"I"_s);
    if (r.segmento.isEmpty()) r = nota.Primeiro(u"B"_s);
    const QString campo = r.segmento == u"I"_s ? u"NCM"_s : u"natOp"_s;
    return u"Layout: "_s + r.segmento + u"|"_s + r.ordem.join(u'|') + u"|\r\n"_s + u"Segmento ["_s +
           r.segmento + u"]: tag <"_s + campo + u"> deve ser informada.\r\n"_s + u"\tLinha: "_s +
           QString::number(r.linha) + u": Conteudo do segmento: "_s + r.texto + u"\r\n"_s;
}

} // namespace

void Simulador::AtendeConversoes(const QString& empresa, const QString& entrada, bool paraEnviar) {
    const QString sufixo = u"-nfe.txt"_s;
    for (const QString& arquivo : TerminadosEm(Variantes(empresa, entrada), sufixo)) {
        QByteArray bytes;
        if (!Pronto(arquivo) || !Le(arquivo, bytes)) continue;
        const QString nome = QFileInfo(arquivo).fileName();
        const QString base = Pasta(empresa, {u"Retorno"_s}) + u'/' + SemSufixo(nome, sufixo);
        const LeituraTxt leitura = LeTxt(bytes);
        QString falha = leitura.mensagemErro;
        if (leitura.resultado == LeituraTxt::Resultado::Lida)
            for (const NotaTxt& nota : leitura.notas)
                if (CenarioDe(nota.Primeiro(u"B"_s)[u"nNF"_s].toLongLong()).desfecho ==
                    Desfecho::ErroConversao)
                    falha += FalhaDoCenario(nota);
        if (leitura.resultado == LeituraTxt::Resultado::SemInformacao || !falha.isEmpty()) {
            if (!Escreve(empresa, base + u"-nfe.err"_s,
                         falha.isEmpty() ? ConversaoVazia() : ConversaoFalhou(falha)))
                continue;
            Move(arquivo, Pasta(empresa, {u"Erro"_s}) + u'/' + nome);
            Registra(empresa, nome + u": conversão falhou"_s);
            continue;
        }
        const QString destino = paraEnviar ? Pasta(empresa, {u"Envio"_s})
                                           : Pasta(empresa, {u"Validar"_s, u"Validado"_s});
        QStringList chaves;
        bool gravou = true;
        for (const NotaTxt& nota : leitura.notas) {
            const NfeAssinada nfe = MontaNfe(nota);
            gravou = gravou &&
                     Escreve(empresa, destino + u'/' + nfe.chave + u"-nfe.xml"_s, nfe.xml.toUtf8());
            chaves.append(nfe.chave);
        }
        if (!gravou || !Escreve(empresa, base + sufixo, ConversaoFeita(chaves))) continue;
        Move(arquivo, base + u"-nfe-orig.txt"_s);
        Registra(empresa, nome + u": convertida, chave "_s + chaves.join(u", "_s));
    }
}

} // namespace uninfesim
