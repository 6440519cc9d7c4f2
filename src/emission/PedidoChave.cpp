#include "emission/PedidoChave.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/LeituraChave.h"
#include "emission/RespostaUniNfe.h"
#include "platform/Sonda.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Larguras.h"
#include "storage/Pastas.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

using LeituraDaChave = ChaveLida (*)(QByteArrayView bytes, const QString& cnpj,
                                     const QString& serie, qint32 nNF);

// Ten looks at the answer, `intervalo` seconds apart; the key found is stored in the sale,
// when it is this sale's key or UniNFe's "0".
QString LeChave(Servidor& s, qint32 nNF, const QString& sufixo, LeituraDaChave leitura,
                double intervalo) {
    const QString nome = u"RETORNO\\"_s + Zeros(nNF, 10) + u"-ret-gerar-chave."_s + sufixo;
    ChaveLida lida;
    QString resposta;
    const bool achou =
        Sonda(s.ambiente, 10, {{Passo::Bombeia}, {Passo::Olha}, {Passo::Aguarda, intervalo}}, [&] {
            resposta = ArquivosDaVenda(s).DaPastaDaEmpresa(nome);
            lida = leitura(RespostaLida(s, resposta), s.empresa.Cnpj, s.empresa.Serie, nNF);
            return !Vazio(lida.chave);
        });
    if (!achou) return {};
    const QString onde = u" WHERE nfce = "_s + QString::number(nNF);
    if (lida.recusada) RecusaChave(s, onde, resposta, lida.chave);
    s.conexoes.Executa(u"UPDATE vendas SET chave = '"_s +
                       EscapaTexto(lida.chave.left(LarguraChave)) + u"'"_s + onde);
    s.ambiente.Aguarda(0.01);
    return lida.chave;
}

} // namespace

void PedeChave(Servidor& s, qint32 nNF, const QString& AAMM, int tpEmis) {
    GravaLinhas(
        ArquivosDaVenda(s).DaPastaDaEmpresa(u"Envio\\"_s + Zeros(nNF, 10) + u"-gerar-chave.xml"_s),
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
