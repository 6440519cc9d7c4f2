#include "support/AmbienteVirtual.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace nfce {

AmbienteVirtual::AmbienteVirtual(QDateTime inicio) : inicio_(std::move(inicio)) {}

void AmbienteVirtual::Aguarda(double segundos) {
    const qint64 duracao = std::max<qint64>(0, std::llround(segundos * 1000.0));
    const qint64 fim = decorrido_ + duracao;
    aguardados_ += duracao;
    Bombeia();
    while (decorrido_ < fim) {
        qint64 proximo = fim;
        if (!agenda_.empty() && agenda_.begin()->first < proximo)
            proximo = std::max(decorrido_, agenda_.begin()->first);
        decorrido_ = std::max(decorrido_, proximo);
        Bombeia();
    }
}

void AmbienteVirtual::DoEvents() {
    Bombeia();
}

void AmbienteVirtual::Bombeia() {
    RodaEventosVencidos();
    // Ids taken first: a hook may add or remove hooks while it runs.
    std::vector<int> ids;
    for (const auto& [id, gancho] : ganchos_)
        ids.push_back(id);
    for (int id : ids) {
        auto it = ganchos_.find(id);
        if (it == ganchos_.end() || it->second.rodando) continue;
        it->second.rodando = true;
        auto funcao = it->second.funcao;
        funcao();
        it = ganchos_.find(id);
        if (it != ganchos_.end()) it->second.rodando = false;
    }
}

void AmbienteVirtual::RodaEventosVencidos() {
    while (!agenda_.empty() && agenda_.begin()->first <= decorrido_) {
        auto evento = std::move(agenda_.begin()->second);
        agenda_.erase(agenda_.begin());
        evento();
    }
}

int AmbienteVirtual::AoBombear(std::function<void()> gancho) {
    ganchos_[++proximoId_] = Gancho{std::move(gancho)};
    return proximoId_;
}

void AmbienteVirtual::RemoveGancho(int id) {
    ganchos_.erase(id);
}

void AmbienteVirtual::Agenda(qint64 emMs, std::function<void()> evento) {
    agenda_.emplace(emMs, std::move(evento));
}

void AmbienteVirtual::MsgBox(const QString& texto, const QString& titulo, Icone icone) {
    mensagens.append({texto, titulo, icone});
    Registra(titulo + QStringLiteral(": ") + texto);
}

bool AmbienteVirtual::Pergunta(const QString& texto, const QString& titulo) {
    perguntas.append(texto);
    Registra(titulo + QStringLiteral(": ") + texto);
    return respostas.isEmpty() ? false : respostas.takeFirst();
}

bool AmbienteVirtual::IniciaPrograma(const QString& programa, const QStringList& argumentos) {
    programasIniciados.append(QStringList{programa} + argumentos);
    return true;
}

QString AmbienteVirtual::BuscaUrl(const QString& url, int) {
    return paginas.value(url);
}

} // namespace nfce
