#include "shell/janela/AmbienteJanela.h"

#include <QMessageBox>

namespace nfce {

namespace {

QMessageBox::Icon IconeDaCaixa(Icone icone) {
    switch (icone) {
    case Icone::Critico:
        return QMessageBox::Critical;
    case Icone::Pergunta:
        return QMessageBox::Question;
    case Icone::Exclamacao:
        return QMessageBox::Warning;
    case Icone::Informacao:
        return QMessageBox::Information;
    case Icone::Nenhum:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void AmbienteJanela::MsgBox(const QString& texto, const QString& titulo, Icone icone) {
    AmbienteQt::MsgBox(texto, titulo, icone);
    QMessageBox caixa(IconeDaCaixa(icone), titulo, texto, QMessageBox::Ok);
    caixa.exec();
}

bool AmbienteJanela::Pergunta(const QString& texto, const QString& titulo) {
    const bool sim =
        QMessageBox::question(nullptr, titulo, texto, QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) == QMessageBox::Yes;
    Registra(titulo + QStringLiteral(": ") + texto +
             (sim ? QStringLiteral(" (Sim)") : QStringLiteral(" (Não)")));
    return sim;
}

} // namespace nfce
