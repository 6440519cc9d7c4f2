#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTime>
#include <functional>

namespace nfce {

enum class Icone { Nenhum, Critico, Pergunta, Exclamacao, Informacao };

// Everything the logic needs from the machine: clock, waits, the event pump, dialogs,
// starting programs and fetching a page. Production runs Qt's event loop; tests run a
// virtual clock, so no routine ever reads the real clock or sleeps on its own.
class Ambiente {
public:
    virtual ~Ambiente() = default;

    // Wall clock: the date and time of day shown to people and written into documents.
    virtual QDateTime Agora() const = 0;
    QDate Data() const { return Agora().date(); }
    QTime Hora() const { return Agora().time(); }

    // Milliseconds on a clock that never goes back, for measuring waits.
    virtual qint64 Monotonico() const = 0;

    // Waits with events running (timers and clicks may run inside the wait).
    virtual void Aguarda(double segundos) = 0;
    // Runs pending events once, without waiting.
    virtual void DoEvents() = 0;
    // Runs `evento` from the event loop as soon as it next runs events (a click queued by
    // the program itself).
    virtual void Posta(std::function<void()> evento) = 0;

    virtual void MsgBox(const QString& texto, const QString& titulo, Icone icone) = 0;
    // Yes/No question with No as the default; true means Yes.
    virtual bool Pergunta(const QString& texto, const QString& titulo) = 0;

    // Starts `programa` with `argumentos`, each passed whole (spaces and all), without waiting
    // for it; false when it could not start.
    virtual bool IniciaPrograma(const QString& programa, const QStringList& argumentos) = 0;

    // One line for the log (time-stamped by the implementation).
    virtual void Registra(const QString& linha) = 0;

    // Body of the page, or "" when it could not be fetched within the time limit.
    virtual QString BuscaUrl(const QString& url, int limiteMs) = 0;
};

} // namespace nfce
