#pragma once

#include "common/PastaDeGuarda.h"
#include "common/TrabalhoGuardado.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace tv {

/// Keeps the unsaved work of one window in a file, which is always a whole one: it is written beside its
/// place, by a thread, and takes it in one step. All calls come from one thread.
class GuardaDeTrabalho {
public:
    GuardaDeTrabalho() = default;
    /// Ends the write under way; what is kept stays for the next start.
    ~GuardaDeTrabalho();
    GuardaDeTrabalho(const GuardaDeTrabalho&) = delete;
    GuardaDeTrabalho& operator=(const GuardaDeTrabalho&) = delete;

    /// Keeps a work in the place of the one before. `conteudo` is called, and let go, in the thread that
    /// writes. Throws Error where the folder cannot be written, Error 5 while a write is under way.
    void guarda(EtiquetaDeTrabalho etiqueta, std::function<PecasDeTrabalho()> conteudo);
    /// True while a write is under way.
    bool ocupada() const noexcept { return ocupada_; }
    /// What the last write failed of, once; empty otherwise.
    std::string falha();
    /// True when a work is kept, or is being written.
    bool temTrabalho() const noexcept { return !lugar_.empty(); }
    /// Where it is kept; empty without any.
    const std::filesystem::path& lugar() const noexcept { return lugar_; }

    /// Goes on with a file of `PastaDeGuarda::assume` as its own.
    void adota(std::shared_ptr<PastaDeGuarda> pasta, std::filesystem::path lugar);
    /// The work needs keeping no more: its file goes, a write under way is given up.
    void larga() noexcept;

private:
    void escreve(const EtiquetaDeTrabalho& etiqueta, const std::function<PecasDeTrabalho()>& conteudo,
                 const std::filesystem::path& lugar);
    void espera() noexcept;

    std::shared_ptr<PastaDeGuarda> pasta_;
    std::filesystem::path lugar_;
    std::thread escrita_;
    std::atomic<bool> ocupada_ = false;
    std::atomic<bool> desiste_ = false;
    std::string falha_; ///< Read only when no write is under way.
};

} // namespace tv
