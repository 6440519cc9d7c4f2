#include "emission/ConsultaSituacao.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "storage/Ajustes.h"
#include "storage/ArquivoTexto.h"
#include "storage/Formatacao.h"

#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

constexpr int LimitePortalMs = 10000;

// Errors ignored: a missing folder or a file in use is no reason to stop.
void EsvaziaPasta(const QString& caminho) {
    QDir pasta(caminho);
    for (const QString& nome : pasta.entryList(QDir::Files | QDir::Hidden | QDir::System))
        pasta.remove(nome);
}

} // namespace

void ConsultaSituacao(Servidor& s, const QString& chave) {
    const ArquivosDaVenda arquivos(s);
    EsvaziaPasta(arquivos.DaEmpresa(u"RETORNO"_s));
    EsvaziaPasta(arquivos.DaEmpresa(u"ENVIO"_s));
    s.venda.MesAutorizados = s.ambiente.Data().toString(u"ddMMyyyy"_s);
    GravaLinhas(arquivos.NoEnvio(chave + u"-ped-sit.txt"_s),
                {
                    u"tpAmb|"_s + TextoNumero(Le(s.pasta, ajustes::TmpAmbNfce)),
                    u"xServ|CONSULTAR"_s,
                    u"tpEmis|1"_s,
                    u"chNFe|"_s + chave,
                    u"versao|4.00"_s,
                });
}

bool TestaInternet(Servidor& s) {
    const QString pagina = s.ambiente.BuscaUrl(Le(s.pasta, ajustes::PortalNfe), LimitePortalMs);
    s.ambiente.Aguarda(0.05);
    return !pagina.isEmpty();
}

} // namespace nfce
