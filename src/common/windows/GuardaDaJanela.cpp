#include "common/windows/GuardaDaJanela.h"

#include "logging/Routine.h"
#include "platform/Error.h"

#include <QElapsedTimer>

#include <utility>

namespace tv {

namespace {

constexpr int maiorFatia = 8; ///< Milliseconds that the preparation takes of a turn of the event loop.

} // namespace

GuardaDaJanela::GuardaDaJanela(Fonte fonte, QObject* dono)
    : QObject(dono)
    , fonte_(std::move(fonte))
    , relogio_(this)
    , fatias_(this) {
    setObjectName(QStringLiteral("guardaDaJanela"));
    fatias_.setSingleShot(true);
    connect(&fatias_, &QTimer::timeout, this, &GuardaDaJanela::olha);
    connect(&relogio_, &QTimer::timeout, this, &GuardaDaJanela::olha);
    relogio_.start(intervalo);
}

GuardaDaJanela::~GuardaDaJanela() = default;

void GuardaDaJanela::larga() {
    guardada_.reset();
    trabalho_.larga();
}

void GuardaDaJanela::adota(const std::shared_ptr<PastaDeGuarda>& pasta, const std::filesystem::path& lugar) {
    guardada_.reset();
    trabalho_.adota(pasta, lugar);
}

void GuardaDaJanela::olha() {
    try {
        colheFalha();
        if (pausas_ == 0) {
            guarda();
        }
    } catch (const std::exception& falha) {
        guardada_.reset();
        avisa(logText(falha));
    }
}

void GuardaDaJanela::guarda() {
    if (!fonte_.temTrabalho()) {
        larga();
        return;
    }
    if (trabalho_.ocupada()) {
        return;
    }
    QElapsedTimer relogio;
    relogio.start();
    if (!fonte_.prepara([&] { return relogio.elapsed() < maiorFatia; })) {
        fatias_.start(0);
        return;
    }
    const std::uint64_t versao = fonte_.versao();
    if (guardada_ != versao) {
        trabalho_.guarda(fonte_.etiqueta(), fonte_.conteudo());
        guardada_ = versao;
    }
}

/// A write that failed is tried again the next time.
void GuardaDaJanela::colheFalha() {
    if (trabalho_.ocupada() || !guardada_) {
        return;
    }
    if (const std::string falha = trabalho_.falha(); !falha.empty()) {
        guardada_.reset();
        avisa(falha);
    } else {
        avisou_ = false;
    }
}

void GuardaDaJanela::avisa(const std::string& falha) {
    if (!std::exchange(avisou_, true) && oLogger != nullptr) {
        const Routine routine("GuardaDaJanela.guarda");
        oLogger->logFATAL("O trabalho não pôde ser guardado: " + falha);
    }
}

} // namespace tv
