#pragma once

#include <QString>
#include <QTemporaryDir>

namespace nfce::teste {

// A MariaDB server of one test process, which the test may kill without touching the shared
// one: started by scripts/mariadb-privado with its data in a temporary folder, on a loopback
// address of its own (the connection string fixes the port at 3306), user master.
class MariaDbPrivado {
public:
    // Whether this machine can run one: mariadbd on PATH.
    static bool Disponivel();

    MariaDbPrivado();
    // Killed outright: its data goes with the folder.
    ~MariaDbPrivado();
    MariaDbPrivado(const MariaDbPrivado&) = delete;
    MariaDbPrivado& operator=(const MariaDbPrivado&) = delete;

    // Starts it, or starts it again on the same data; false with the reason in erro().
    bool Inicia();
    // SIGKILL, as a crash or a pulled plug would end it; returns once the process is gone.
    bool Mata();

    const QString& endereco() const { return endereco_; }
    const QString& erro() const { return erro_; }

private:
    QTemporaryDir dir_;
    QString endereco_;
    QString erro_;
};

} // namespace nfce::teste
