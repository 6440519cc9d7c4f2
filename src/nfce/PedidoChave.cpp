#include "nfce/PedidoChave.h"

#include "contexto/Servidor.h"
#include "nfce/ChaveAcesso.h"
#include "nfce/RespostaUniNfe.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Larguras.h"
#include "storage/Pastas.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

QString DaEmpresa(const Servidor& s, const QString& relativo) {
    return Caminho(s.pasta, s.empresa.Cnpj + u"\\"_s + relativo);
}

using LeituraDaChave = QString (*)(const QStringList& linhas);

QString ChaveDoXml(const QStringList& linhas) {
    QString chave;
    for (const QString& linha : linhas)
        chave = linha.mid(63, 44);
    // UniNFe's "0" (no key) ends its element inside the 44 characters.
    return chave.section(u'<', 0, 0);
}

QString ChaveDoTexto(const QStringList& linhas) {
    return linhas.isEmpty() ? QString() : linhas.last();
}

// Ten looks at the answer, `intervalo` seconds apart; the key found is stored in the sale,
// when it is this sale's key or UniNFe's "0".
QString LeChave(Servidor& s, qint32 nNF, const QString& sufixo, LeituraDaChave leitura,
                double intervalo) {
    const QString nome = u"RETORNO\\"_s + Zeros(nNF, 10) + u"-ret-gerar-chave."_s + sufixo;
    QString chave;
    QString resposta;
    for (int tentativa = 0; tentativa < 10 && Vazio(chave); ++tentativa) {
        s.ambiente.DoEvents();
        resposta = DaEmpresa(s, nome);
        if (RespostaPresente(s, resposta)) chave = leitura(LinhasDoArquivo(resposta));
        s.ambiente.Aguarda(intervalo);
    }
    if (Vazio(chave)) return {};
    const QString onde = u" WHERE nfce = "_s + QString::number(nNF);
    if (!RespostaSemChave(chave) && !ChaveDaNota(chave, s.empresa.Cnpj, s.empresa.Serie, nNF)) {
        RecusaChave(s, onde, resposta, chave);
    }
    s.conexoes.Executa(u"UPDATE vendas SET chave = '"_s + EscapaTexto(chave.left(LarguraChave)) +
                       u"'"_s + onde);
    s.ambiente.Aguarda(0.01);
    return chave;
}

} // namespace

void PedeChave(Servidor& s, qint32 nNF, const QString& AAMM, int tpEmis) {
    GravaLinhas(DaEmpresa(s, u"Envio\\"_s + Zeros(nNF, 10) + u"-gerar-chave.xml"_s),
                {
                    u"<?xml version=\"1.0\" encoding=\"utf-8\"?>"_s,
                    u"<gerarChave>"_s,
                    u" <UF>31</UF>"_s,
                    u" <tpEmis>"_s + QString::number(tpEmis) + u"</tpEmis>"_s,
                    u" <nNF>"_s + QString::number(nNF) + u"</nNF>"_s,
                    u" <serie>"_s + Zeros(s.empresa.Serie, 3) + u"</serie>"_s,
                    u" <AAMM>"_s + AAMM + u"</AAMM>"_s,
                    u" <CNPJ>"_s + s.empresa.Cnpj + u"</CNPJ>"_s,
                    u" <mod>65</mod>"_s,
                    u"</gerarChave>"_s,
                });
    s.ambiente.Aguarda(1);
}

QString LeChaveXml(Servidor& s, qint32 nNF) {
    return LeChave(s, nNF, u"xml"_s, ChaveDoXml, 0.5);
}

QString LeChaveTxt(Servidor& s, qint32 nNF) {
    return LeChave(s, nNF, u"txt"_s, ChaveDoTexto, 1);
}

} // namespace nfce
