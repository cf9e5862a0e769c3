#pragma once

#include "common/GuardaDeTrabalho.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace tv {

/// Keeps a window's unsaved work from time to time, for the case that the program does not come to its end.
/// It looks every `intervalo`; only what has changed since is kept. A failure is logged once, and told
/// again only after a success; the window goes on without.
class GuardaDaJanela : public QObject {
    Q_OBJECT
public:
    /// How often windows look. Read when a window is made.
    static inline std::chrono::milliseconds intervalo{15000};

    /// What the window tells about its work.
    struct Fonte {
        /// True when closing would lose something.
        std::function<bool()> temTrabalho;
        /// Makes the snapshot ready, as long as it is told to go on; true when it is.
        std::function<bool(const std::function<bool()>& continua)> prepara;
        /// Another number after each change.
        std::function<std::uint64_t()> versao;
        std::function<EtiquetaDeTrabalho()> etiqueta;
        /// The snapshot, as what makes its bytes in another thread.
        std::function<std::function<PecasDeTrabalho()>()> conteudo;
    };

    GuardaDaJanela(Fonte fonte, QObject* dono);
    ~GuardaDaJanela() override;

    /// The work is saved, or not wanted: what was kept of it goes.
    void larga();
    /// Goes on with a file that was left behind, whose work the window shows.
    void adota(const std::shared_ptr<PastaDeGuarda>& pasta, const std::filesystem::path& lugar);

    /// Nothing is kept while one lives: what the window shows is on its way to something else.
    class Pausa {
    public:
        explicit Pausa(GuardaDaJanela& guarda)
            : guarda_(guarda) {
            ++guarda_.pausas_;
        }
        ~Pausa() { --guarda_.pausas_; }
        Pausa(const Pausa&) = delete;
        Pausa& operator=(const Pausa&) = delete;

    private:
        GuardaDaJanela& guarda_;
    };

private:
    void olha();
    void guarda();
    void colheFalha();
    void avisa(const std::string& falha);

    Fonte fonte_;
    GuardaDeTrabalho trabalho_;
    QTimer relogio_;
    QTimer fatias_; ///< Takes the preparation up again after a turn of the event loop.
    std::optional<std::uint64_t> guardada_;
    bool avisou_ = false;
    int pausas_ = 0;
};

} // namespace tv
