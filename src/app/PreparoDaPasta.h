#pragma once

#include "app/Manifesto.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tv {

/// Makes a user's application folder from the files of a distribution and keeps it up to date. Files that the
/// user left alone are replaced; of those that he changed, the new one is put beside as NAME.novo. Nothing of
/// the user's is ever lost, whenever the process ends: what has not been finished is done again the next
/// time. Several processes may do this at once; they take turns.
class PreparoDaPasta {
public:
    /// `distribuicao` is a folder with the files and their list (`lista`), `pasta` the user's.
    PreparoDaPasta(std::filesystem::path distribuicao, std::filesystem::path pasta);

    /// Whether a folder holds what a user's folder can be made from.
    static bool serve(const std::filesystem::path& distribuicao);

    /// Sets the folder up when the distribution is not the one that was set up last, or when the catalog is
    /// gone. New files are written whole before the first old one goes. Gives the names of the files whose
    /// new one now stands beside them for the first time. Throws Error 5, 53, 61, 70, 75 or 76; `pronta`
    /// tells whether the folder can be used nevertheless.
    std::vector<std::string> prepara();

    /// Whether the folder is whole, be it that of an earlier distribution.
    bool pronta() const;

    /// Changed files whose new one stands beside them and that the user has not decided about.
    std::vector<std::string> ofertas() const;
    /// Puts the new files in place of the changed ones, which stay beside as NAME.anterior_DATE_TIME. Throws
    /// as `prepara`; a file is replaced in one step.
    void aceita();
    /// Leaves the changed files; they are no longer among the offers, but the new ones stay beside.
    void recusa();

    static constexpr const char* lista = "manifesto.sha256";   ///< In the distribution's folder.
    static constexpr const char* registro = ".instalacao.txt"; ///< In the user's folder.
    static constexpr const char* novo = ".novo";               ///< What the name of an offered file ends in.

private:
    /// A file of the distribution on its way into the folder.
    struct Passo {
        std::string nome;
        std::string soma;
        std::filesystem::path destino;
        bool oferta;
    };

    Manifesto leRegistro() const;
    void gravaRegistro(const Manifesto& manifesto) const;
    /// Through the folder of what is not in place yet, so that nothing half written ever stands elsewhere.
    void escreveInteiro(const std::filesystem::path& arquivo, const std::string& bytes) const;
    bool emDia(const Manifesto& manifesto, const std::string& origem) const;
    std::vector<Passo> planeja(const Distribuidos& distribuidos, const Manifesto& manifesto) const;
    void escreve(const std::vector<Passo>& passos) const;
    void poe(const std::vector<Passo>& passos) const;
    std::filesystem::path rascunho(std::size_t passo) const;
    std::filesystem::path lugar(const std::string& nome) const;

    std::filesystem::path distribuicao_;
    std::filesystem::path pasta_;
};

} // namespace tv
