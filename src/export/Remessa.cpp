#include "export/Remessa.h"

#include "context/Servidor.h"
#include "export/Exportacao.h"
#include "export/Literais.h"
#include "storage/ErroExecucao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

void Registra(Servidor& servidor, const QString& linha) {
    servidor.ambiente.Registra(u"Exportação: "_s + linha);
}

// Whether the remote side has the row; when it cannot say, `motivo` tells why.
bool NoRemoto(Servidor& servidor, const Linha& linha, QString& motivo) {
    try {
        Registros rs;
        servidor.conexoes.AbreConsultaRemota(rs, linha.confere());
        return rs.RecordCount() != 0;
    } catch (const ErroExecucao& erro) {
        motivo = u" (%1, erro %2)"_s.arg(erro.descricao(), QString::number(erro.numero()));
        return false;
    }
}

} // namespace

QString MarcaExportado(const Linha& linha, Marca marca) {
    const QString id = NumeroSemAspas(linha.rs, u"id"_s);
    if (marca == Marca::Enviada)
        return u"UPDATE %1 SET exportado = 2 WHERE id = %2"_s.arg(linha.tabela, id);
    return u"UPDATE %1 SET exportado = true WHERE id = %2 AND exportado = 2"_s.arg(linha.tabela,
                                                                                   id);
}

bool ExportaLinha(Servidor& servidor, const Linha& linha, const std::function<void()>& envia,
                  ResultadoExportacao& resultado) {
    QString motivo;
    const bool enviadaAntes = linha.rs.Texto(u"exportado"_s) == u"2";
    bool encontrada = enviadaAntes && NoRemoto(servidor, linha, motivo);
    if (!encontrada && motivo.isEmpty()) {
        if (!enviadaAntes) servidor.conexoes.Executa(MarcaExportado(linha, Marca::Enviada));
        envia();
        encontrada = NoRemoto(servidor, linha, motivo);
    }
    if (encontrada) {
        servidor.conexoes.Executa(MarcaExportado(linha, Marca::Confirmada));
        return true;
    }
    const QString texto = linha.oQue + u' ' + linha.chave;
    resultado.naoEncontrados.append(texto);
    Registra(servidor, u"não encontrado no servidor remoto: "_s + texto + motivo);
    return false;
}

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

} // namespace nfce
