#pragma once

#include "apoio/BancoTeste.h"
#include "contexto/Servidor.h"

#include <memory>

namespace nfce::teste {

// A server on the test's shop database, with sales written straight into `vendas`. The
// virtual clock's today is 2026-11-15.
class BaseFila : public BancoTeste {
protected:
    struct Venda {
        QString data; // a quoted literal or NULL
        int cupom;
        QString nfce; // as written into the statement
        QString tempo;
        int enviotime;
        QString autorizacao;
    };

    void SetUp() override {
        BancoTeste::SetUp();
        if (IsSkipped()) return;
        s = std::make_unique<Servidor>(pasta.caminho(), ambiente);
        s->conexoes.PreparaConexaoPrincipal();
    }
    void TearDown() override {
        s.reset();
        BancoTeste::TearDown();
    }

    void Insere(const Venda& v) {
        Executa(QStringLiteral("INSERT INTO vendas (data, cupom, nfce, tempo, enviotime, "
                               "autorizacao) VALUES (%1, %2, %3, '%4', %5, '%6')")
                    .arg(v.data)
                    .arg(v.cupom)
                    .arg(v.nfce, v.tempo)
                    .arg(v.enviotime)
                    .arg(v.autorizacao));
    }
    // The work list in the order it was written.
    QStringList Fila() {
        const Resultado r = s->conexoes.AbreLocal()->Consulta(
            QStringLiteral("SELECT cupom FROM ncupom ORDER BY rowid"));
        QStringList numeros;
        for (const auto& linha : r.linhas)
            numeros.append(linha.value(0).toString());
        return numeros;
    }
    void PoeNaFila(const QStringList& numeros) {
        for (const QString& n : numeros)
            s->conexoes.AbreLocal()->Executa(
                QStringLiteral("INSERT INTO ncupom (cupom) VALUES ('%1')").arg(n));
    }

    std::unique_ptr<Servidor> s;
};

} // namespace nfce::teste
