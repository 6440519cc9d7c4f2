#include "shell/Inicio.h"

#include "context/Servidor.h"
#include "storage/Ajustes.h"
#include "storage/Configuracao.h"
#include "storage/Pastas.h"

#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

void TimerInicio(Servidor& s) {
    s.empresa.Cnpj = LerEmpresa(s.pasta, u"CNPJ"_s);
    s.painel.LblQuantCup = u"0"_s;
    // TEMP goes into a 16-bit count: beyond it the server does not start.
    Le(s.pasta, ajustes::Temp, 0);
    s.ambiente.Aguarda(0.05);
    CarregaEmpresaEPastas(s);
    s.conexoes.PreparaConexaoPrincipal();
    s.conexoes.AbreConexaoRemota();
    s.painel.TimerVendasAtivo = true;
}

void CarregaEmpresaEPastas(Servidor& s) {
    s.empresa = CarregaEmpresa(s.pasta);
    Alterar(s.pasta, s.empresa.Cnpj, s.ambiente.Data());
    QDir().mkpath(Caminho(s.pasta, s.empresa.Cnpj + u"\\Validar"_s));
}

} // namespace nfce
