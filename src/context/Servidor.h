#pragma once

#include "context/EstadoEnvio.h"
#include "context/EstadoFila.h"
#include "context/EstadoVenda.h"
#include "context/Painel.h"
#include "platform/Ambiente.h"
#include "storage/Conexoes.h"
#include "storage/Empresa.h"

#include <QSet>
#include <functional>

namespace nfce {

// One running server: everything the routines share, passed by reference instead of
// living in module globals, so two servers can run side by side in one test.
struct Servidor {
    Servidor(QString pastaPrograma, Ambiente& ambiente)
        : pasta(std::move(pastaPrograma)), ambiente(ambiente), conexoes(pasta, ambiente) {}

    // A damaged answer is read again at every look: the log gets its line the first time.
    void RegistraUmaVez(const QString& linha) {
        if (registrados.contains(linha)) return;
        registrados.insert(linha);
        ambiente.Registra(linha);
    }

    const QString pasta; // the program folder
    Ambiente& ambiente;
    Empresa empresa;
    Conexoes conexoes;
    EstadoVenda venda;
    EstadoFila fila;
    EstadoEnvio envio;
    Painel painel;

    // The single-sale re-emission that some rejections start (argument: the NFC-e number);
    // nothing happens while the drivers have not set it.
    std::function<void(const QString& nfce)> EmiteNfceImprime;

private:
    QSet<QString> registrados;
};

} // namespace nfce
