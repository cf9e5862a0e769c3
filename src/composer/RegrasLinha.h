#pragma once

#include "composer/Documento.h"
#include "composer/HistoricoEdicao.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tv {

/// What row editing may do in a document's grids, and what it brings about. Rows are named by their record
/// set's numbers. Failures are logged; the routines then give their failing value.
class RegrasLinha {
public:
    explicit RegrasLinha(Documento& documento) noexcept
        : documento_(documento) {}

    struct Validacao {
        bool valida = true;
        std::string mensagem; ///< Names the fields at fault, one a line; for an exclamation box.
    };
    struct NovaLinha {
        std::optional<std::size_t> linha; ///< The row added, not ended yet; nothing when none was.
        std::string mensagem;             ///< Why not, to be shown unless it is empty.
    };

    /// Adds a row to the grid unless rows cannot be added, the active row (if any) is invalid or the section
    /// is full, which needs no message.
    NovaLinha addRow(GradeSecao& grade, std::optional<std::size_t> linhaAtiva);
    /// Puts each field's value, in the form of its output mask, to the field's rules. No row at all is valid,
    /// and so is every row while rows are being deleted.
    Validacao validateRow(const GradeSecao& grade, std::optional<std::size_t> linha) const;
    /// True for a master section, for one without rows in its view, and while the view has fewer rows than
    /// the section's occurrence allows.
    bool canAddRow(const GradeSecao& grade) const;
    /// The number in a row's cell `rowID`; 0 for an empty cell.
    std::int32_t getRowID(const GradeSecao& grade, std::size_t linha) const;

    /// A row's editing has ended. A valid row makes the document unsaved; one of a master, or of a section
    /// that holds others, puts its fund into the tree or renames it there. An invalid row stays as it is.
    Validacao grid_AfterRowUpdate(const GradeSecao& grade, std::size_t linha);
    /// These rows are about to be deleted: the `rowID`s of masters are kept for their details.
    void grid_BeforeRowsDeleted(const GradeSecao& grade, const std::vector<std::size_t>& linhas);
    /// What will go with that deletion, rows with their values: the rows themselves and the details of
    /// masters. To be asked between the two.
    std::vector<LinhaGuardada> linhasQueSaem(const GradeSecao& grade,
                                             const std::vector<std::size_t>& linhas) const;
    /// The rows are gone. The details of deleted masters go too, in the detail grids under the same top
    /// section; gives those grids, which show all their rows again and are to be formatted anew.
    std::vector<GradeSecao*> grid_AfterRowsDeleted(const GradeSecao& grade);

private:
    void preencheChaves(GradeSecao& grade);
    void incluiNaArvore(const GradeSecao& grade, std::size_t linha, const clsSecao& secao);
    std::vector<GradeSecao*> gradesDeDetalhe(const GradeSecao& mestre) const;

    Documento& documento_;
};

} // namespace tv
