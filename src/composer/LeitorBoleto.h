#pragma once

#include "composer/Documento.h"
#include "platform/XmlDocument.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

namespace tv {

/// Reads a file into a document's record sets. It takes what it finds: the file was checked before, and what
/// a column cannot hold is left out.
class LeitorBoleto {
public:
    /// What hears of a load's progress; empty functions hear nothing.
    struct Progresso {
        std::function<void(std::size_t)> maximo; ///< Number of elements of the top section that comes next.
        std::function<void()> avanca;            ///< One of them was read.
    };

    explicit LeitorBoleto(Documento& documento, Progresso progresso = {});
    ~LeitorBoleto();
    LeitorBoleto(const LeitorBoleto&) = delete;
    LeitorBoleto& operator=(const LeitorBoleto&) = delete;

    /// Gives the document the file's rows and funds in place of its own; the record sets are new ones, which
    /// no grid is bound to yet. False when the file cannot be loaded as XML; the document is as it was then.
    ///
    /// Throws Error 5 for an element that the layout has no section for, Error 6 for a whole number beyond 16
    /// bits, Error 13 for a date that is none, and what the conversion throws. What was read until then
    /// stays.
    bool abre(const std::filesystem::path& arquivo);
    /// The same from a document in memory, whose shape is changed on the way.
    void abre(XmlDocument& dom);

private:
    struct Linhas;

    void abreSecoes(const XmlDocument& dom);
    void abrirBoleto_detalhe(const SectionOwner& secao, const XmlDocument& dom);
    std::string caminho(const SectionOwner& secao) const;
    const clsSecao& secaoDaLinha(const SectionOwner& secao, const XmlNode& no) const;
    Linhas& linhasDe(const SectionOwner& secao, const clsSecao& daLinha);
    void leLinha(const SectionOwner& secao, const XmlNode& no);
    void preparaFiltros() const;
    void fechaMestre(const SectionOwner& secao, Linhas& linhas);

    Documento& documento_;
    Progresso progresso_;
    RecordSets recordSets_;
    std::unordered_map<const clsSecao*, std::unique_ptr<Linhas>> linhas_;
    std::int32_t maiorRowID_ = 0;
};

} // namespace tv
