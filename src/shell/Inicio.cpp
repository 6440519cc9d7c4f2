#include "shell/Inicio.h"

#include "contexto/Servidor.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

void TimerInicio(Servidor& s) {
    s.empresa.Cnpj = LerEmpresa(s.pasta, u"CNPJ"_s);
    s.painel.LblQuantCup = u"0"_s;
    s.Temp = Inteiro16(s.LerConfig(u"TEMP"_s), u"TEMP"_s);
    s.ambiente.Aguarda(0.05);
    s.empresa = CarregaEmpresa(s.pasta);
    Alterar(s.pasta, s.empresa.Cnpj, s.ambiente.Data());
    // UniNFe makes its input folder when it runs; made here too, so a sale sent before UniNFe
    // ever ran is not lost to a missing folder.
    QDir().mkpath(Caminho(s.pasta, s.empresa.Cnpj + u"\\Validar"_s));
    s.conexoes.PreparaConexaoPrincipal();
    s.conexoes.AbreConexaoRemota();
    s.painel.TimerVendasAtivo = true;
}

} // namespace nfce
