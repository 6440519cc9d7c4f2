#include "export/Remessa.h"

#include "contexto/Servidor.h"
#include "export/Exportacao.h"
#include "storage/ErroExecucao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {
void Registra(Servidor& servidor, const QString& linha) {
    servidor.ambiente.Registra(u"Exportação: "_s + linha);
}
} // namespace

bool Tenta(Servidor& servidor, const QString& oQue, const QString& chave,
           const std::function<void()>& passo) {
    try {
        passo();
        return true;
    } catch (const ErroExecucao& erro) {
        Registra(servidor, u"falha ao enviar %1 (%2): %3 (erro %4)"_s.arg(
                               oQue, chave, erro.descricao(), QString::number(erro.numero())));
        return false;
    }
}

bool EnviaRemoto(Servidor& servidor, const std::function<QString()>& monta, const QString& oQue,
                 const QString& chave) {
    return Tenta(servidor, oQue, chave, [&] { servidor.conexoes.ExecutaRemota(monta()); });
}

bool ConfereRemoto(Servidor& servidor, const std::function<QString()>& confere,
                   const std::function<QString()>& marca, const QString& oQue, const QString& chave,
                   ResultadoExportacao& resultado) {
    bool encontrado = false;
    QString motivo;
    try {
        Registros rs;
        servidor.conexoes.AbreConsultaRemota(rs, confere());
        encontrado = rs.RecordCount() != 0;
    } catch (const ErroExecucao& erro) {
        motivo = u" (%1, erro %2)"_s.arg(erro.descricao(), QString::number(erro.numero()));
    }
    if (encontrado) {
        servidor.conexoes.Executa(marca());
        return true;
    }
    const QString linha = oQue + u' ' + chave;
    resultado.naoEncontrados.append(linha);
    Registra(servidor, u"não encontrado no servidor remoto: "_s + linha + motivo);
    return false;
}

} // namespace nfce
