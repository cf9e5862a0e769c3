#pragma once

#include "platform/FileLock.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// The folder in which running programs keep unsaved work, each under a name of its own and a lock that lives
/// as long as its process. The work of a program that still runs is nobody else's; what a program that is
/// gone left behind belongs to the first one that takes it over.
///
/// The folder, and the lock in it, are there only while there is something to keep. File names:
/// "<program>_<number>.trabalho" for work, ".parcial" instead while it is being written, ".recusado" and
/// ".danificado" for what is set aside, "<program>.trava" for a lock.
class PastaDeGuarda {
public:
    /// What is set aside goes after so many days.
    static constexpr int diasDosRecusados = 7;

    explicit PastaDeGuarda(std::filesystem::path pasta);
    /// Lets the lock go; what is kept stays for the next start.
    ~PastaDeGuarda();
    PastaDeGuarda(const PastaDeGuarda&) = delete;
    PastaDeGuarda& operator=(const PastaDeGuarda&) = delete;

    /// The folder of this process: "recuperacao" beside the log, or in the application folder without a log.
    static std::shared_ptr<PastaDeGuarda> doPrograma();

    const std::filesystem::path& pasta() const noexcept { return pasta_; }

    /// The name of a new file for work; the folder is there then. Throws Error as files::append.
    std::filesystem::path novoLugar();
    /// Takes a file of `novoLugar` or `assume` away, if it is there, and with the last one lock and folder.
    void libera(const std::filesystem::path& lugar) noexcept;

    /// Takes over what programs that are gone left behind: gives the files, which are this program's from now
    /// on, oldest first. Half-written files and what was set aside long ago go. Failures are passed over:
    /// what cannot be taken over is left to a later start.
    std::vector<std::filesystem::path> assume();

    /// Sets a file aside that is not wanted, or damaged: nobody is asked about it again, but it can be found
    /// for some days. Throws Error 75 where it cannot be renamed.
    void recusa(const std::filesystem::path& lugar) { separa(lugar, ".recusado"); }
    void danificado(const std::filesystem::path& lugar) { separa(lugar, ".danificado"); }

private:
    void abre();
    void fecha() noexcept;
    void separa(const std::filesystem::path& lugar, std::string_view extensao);
    void assumeDe(const std::string& programa, std::vector<std::filesystem::path>& assumidos);
    std::set<std::string> outrosProgramas() const;
    std::vector<std::filesystem::path> arquivos(const std::function<bool(const std::string&)>& serve) const;
    void limpa() const;

    std::filesystem::path pasta_;
    std::string programa_; ///< This process's name; empty while it keeps nothing.
    std::optional<FileLock> trava_;
    std::set<std::filesystem::path> lugares_;
    std::uint64_t ultimo_ = 0;
};

} // namespace tv
