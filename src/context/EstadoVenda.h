#pragma once

#include <QString>

namespace nfce {

// The state of the sale being emitted, shared by the generator, the key request and
// the return readers. It lives as long as the server: a nested pass started inside a
// wait sees and changes the same values, as the drivers rely on.
struct EstadoVenda {
    qint32 NumCupom = 0;
    qint32 NumNfce = 0;
    QString CnpjEmpresa; // company folder of the file just written
    QString SerieNfce;   // three digits, of the file just written
    QString DataArquivo; // ddmmyyyy of the file just written
    QString MesAutorizados;
    QString MesContabil;
    QString ModoRetorno;
    bool ImprimeCupom = false;
    bool VendaOrcamento = false;
    qint32 NumOrcamento = 0;
    QString TipoEmissao = QStringLiteral("9");
    QString NumLote;
    int TempoEspera = 0;
    QString Mensagem;
    qint32 CodigoCliente = 0; // last customer code the driver read
    QString Vendedor;         // seller's name for the receipt; empty leaves it out
    qint32 CodigoUsuario = 0;
};

} // namespace nfce
