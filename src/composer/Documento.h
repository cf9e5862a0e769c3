#pragma once

#include "composer/ArvoreFundos.h"
#include "composer/GradeSecao.h"
#include "model/clsBoleto.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// What a composer's window remembers while its user works.
struct EstadoDocumento {
    const SectionOwner* noAtual = nullptr;   ///< The layout or section whose sections are worked on.
    const clsSecao* secaoAtual = nullptr;    ///< Section in the visible grid; null where none is known.
    std::string arquivo;                     ///< Path of the document; empty until it is opened or saved.
    bool salvo = true;                       ///< Nothing is unsaved.
    bool apagando = false;                   ///< Rows are being deleted.
    bool carregando = false;                 ///< A row is being added while a file is loaded.
    bool abrindo = false;                    ///< A file was opened once; stays set for the window's life.
    std::int32_t ultimoRowID = 0;            ///< Last `rowID` handed out.
    std::vector<std::string> linhasApagadas; ///< `rowID`s of the master rows that are being deleted.
    std::string chaveGrid;                   ///< Key of the grid on top.
    std::string chaveNo;      ///< Key of the selected node, under which new funds are put; empty without one.
    bool btnAdicionar = true; ///< Whether rows can be added,
    bool btnRemover = true;   ///< and removed.
};

/// One document of one layout without a screen: its grids with their rows, the fund tree and the state of the
/// window. The window shows what stands here.
class Documento {
public:
    Documento() = default;
    Documento(Documento&&) = default;
    Documento& operator=(Documento&&) = default;
    Documento(const Documento&) = delete; // two documents must not share rows
    Documento& operator=(const Documento&) = delete;
    ~Documento() = default;

    /// Starts a new document of the layout: no rows, tree and grids made, the first grid current. The grids
    /// of a document before are gone. Throws Error 91, 5 or 9 for a layout whose first grid cannot be told,
    /// Error 457 when two sections share a path, Error 91 for a section without a record set.
    void abrir(std::shared_ptr<const clsBoleto> boleto);
    /// Makes the tree anew and gives every grid a new record set (the grids themselves on the first call),
    /// then makes the first grid current. Throws as `abrir`.
    void createGrid();

    /// The layout given to `abrir`; the layout that gives tags and structure, which stays the first one.
    const std::shared_ptr<const clsBoleto>& boleto() const noexcept { return boleto_; }
    const clsBoleto& layout() const noexcept { return *layout_; }
    /// True when the fund tree is shown.
    bool arvoreVisivel() const noexcept { return layout_->hasGrupo(); }

    const Grades& grids() const noexcept { return grids_; }
    /// The section under a grid's key, or the layout under "kCONST_RAIZ". Throws Error 5 when there is none.
    const SectionOwner& secaoPorChave(std::string_view chave) const;
    /// The grid under a key. Throws Error 5 when there is none.
    GradeSecao& grade(std::string_view chave) const { return *grids_.Item(chave); }
    /// The current grid. Throws Error 91 before `abrir`.
    GradeSecao& getGrid() const;
    void setGrid(GradeSecao& grade) noexcept { grade_ = &grade; }

    /// Key of the grid to show first, by `noAtual`. Throws Error 91 when it has no master section.
    std::string chavePrimeiraGrade() const;
    /// The grids' record sets under the paths of the sections' tags, for a load or a save. Throws Error 5
    /// when a section with fields has no grid under its path.
    RecordSets addRSCollection() const;

    /// Gives the grid the caption of its section: the layout's title for a master, otherwise its name.
    void setCaption(GradeSecao& grade, const clsSecao& secao) const;

    /// Which section a grid stands for at the moment. Throws Error 9 when a fund is selected, Error 5 when
    /// `noAtual` has no section of the grid's tag.
    const SectionOwner& secaoDaGrade(const GradeSecao& grade) const;

    /// Selects a node of the tree (the empty key selects none); its key becomes `chaveNo`. Throws Error 5
    /// when there is no such node.
    void selecionaNo(std::string_view chave);

    /// Takes all nodes out; without a selected node there is no `chaveNo`.
    void limpaArvore();

    EstadoDocumento estado;
    ArvoreFundos arvore;

private:
    void montaArvore();
    void montaGrid(const SectionOwner& obj, const std::string& chavePai, const clsSecao* secaoTopo);
    void montaGrid_abreBoleto();
    void incluiGrade(const SectionOwner& obj, const clsSecao& secao, const clsSecao& secaoTopo,
                     const std::string& chave);
    void escolhePrimeiraGrade();
    void addRSCollection(const SectionOwner& obj, const std::string& chave, RecordSets& recordSets) const;

    std::shared_ptr<const clsBoleto> boleto_;
    std::shared_ptr<const clsBoleto> layout_;
    Grades grids_;
    KeyedCollection<const SectionOwner*> secoesPorChave_;
    GradeSecao* grade_ = nullptr;
};

/// `owner` as a section. Throws Error 438 for a layout.
const clsSecao& comoSecao(const SectionOwner& owner);

} // namespace tv
