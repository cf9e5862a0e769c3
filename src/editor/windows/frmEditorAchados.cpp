#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/textoQt.h"
#include "editor/PosicaoAchado.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"
#include "platform/text.h"

#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <array>

/// The list of findings, and the way from a finding to its place in the text.
namespace tv {

namespace {

struct Coluna {
    std::string_view nome;
    const char16_t* titulo;
    ColumnType tipo;
    int porCento; ///< Of the grid's width less `menosNaLargura`.
};

/// Together they are wider than the grid, which scrolls sideways.
constexpr std::array<Coluna, 7> colunas{{
    {"linha", u"linha", ColumnType::Integer, 5},
    {"coluna", u"coluna", ColumnType::Integer, 5},
    {"fundo", u"Fundo", ColumnType::FixedChar, 15},
    {"secao", u"Seção", ColumnType::FixedChar, 15},
    {"campo", u"Campo", ColumnType::FixedChar, 15},
    {"valor", u"Valor", ColumnType::FixedChar, 15},
    {"descricao", u"Descrição", ColumnType::FixedChar, 40},
}};
constexpr int menosNaLargura = 150 / 15; ///< Pixels.
constexpr int tamanhoTexto = 255;        ///< Nominal size of a text column.

std::string aparado(std::string_view texto) {
    return std::string(text::trim(texto));
}

/// Adds a finding. A finding whose field cannot be told is shown without it.
void adiciona(RecordSet& dados, const clsResultado& achado) {
    dados.AddNew();
    dados.set("linha", achado.linha());
    dados.set("coluna", achado.coluna());
    dados.set("fundo", aparado(achado.getFundo()));
    dados.set("secao", aparado(achado.getSecao()));
    try {
        dados.set("campo", aparado(achado.getCampo()));
    } catch (const Error& falha) {
        logFailure(falha);
        dados.set("campo", std::string());
    }
    dados.set("valor", aparado(achado.getValor()));
    dados.set("descricao", aparado(achado.Descricao()));
    dados.Update();
}

} // namespace

Grade& frmEditor::grade() const {
    return painelGrade_->grade();
}

void frmEditor::createGrid() {
    auto dados = std::make_shared<RecordSet>();
    for (const Coluna& coluna : colunas) {
        dados->Append(std::string(coluna.nome), coluna.tipo,
                      coluna.tipo == ColumnType::FixedChar ? tamanhoTexto : 0);
    }
    dados->Open();
    if (resultados_) {
        for (const clsResultado& achado : *resultados_) {
            adiciona(*dados, achado);
        }
    }
    grade().modelo().setDados(std::move(dados));
    for (const Coluna& coluna : colunas) {
        ColunaGrade aparencia;
        aparencia.titulo = QString::fromUtf16(coluna.titulo);
        aparencia.alinhamento = coluna.tipo == ColumnType::Integer ? Qt::AlignRight : Qt::AlignLeft;
        grade().modelo().setColuna(coluna.nome, std::move(aparencia));
    }
    setLarguras();
}

void frmEditor::grid_InitializeLayout() {
    guarded("frmEditor.grid_InitializeLayout", [this] { controleLib::gridInitializeLayout(grade()); });
}

void frmEditor::setLarguras() {
    ModeloGrade& modelo = grade().modelo();
    if (!modelo.dados()) {
        return;
    }
    // The grid takes the splitter's width, but hears of it only when it is shown.
    const int largura = std::max(splitter_->width() - menosNaLargura, 0);
    for (const Coluna& coluna : colunas) {
        ColunaGrade aparencia = modelo.coluna(modelo.indice(coluna.nome));
        aparencia.largura = largura * coluna.porCento / 100;
        modelo.setColuna(coluna.nome, std::move(aparencia));
    }
    grade().aplicaColunas();
}

void frmEditor::setGrid(const std::shared_ptr<const Resultados>& resultados) {
    resultados_ = resultados;
    quebrasDosAchados_ = quebras_;
    guarded("frmEditor.setGrid", [this] { createGrid(); });
}

void frmEditor::grid_AfterRowActivate() {
    guarded("frmEditor.grid_AfterRowActivate", [this] {
        const int ativa = grade().linhaAtiva();
        if (ativa < 0) {
            return;
        }
        const auto celula = [&](std::string_view nome) {
            return paraUtf8(grade().modelo().texto(ativa, nome));
        };
        const LugarTexto lugar =
            quebrasDosAchados_.lugar({numeroInicial(celula("linha")), numeroInicial(celula("coluna"))});
        const QString valor = semBlancos(grade().modelo().texto(ativa, "valor"));
        const SelecaoTexto selecao = selecaoDoAchado(txtXML_->inicioDaLinha(lugar.linha - 1), lugar.coluna,
                                                     static_cast<std::int32_t>(valor.size()));
        txtXML_->seleciona(selecao.SelStart, selecao.SelLength);
        txtXML_->centerCursor();
        if (selecao.temLugar) {
            proceed([this] { txtXML_->setFocus(); });
        }
    });
}

void frmEditor::achadoAtivado() {
    ativadoAgora_ = true;
    QTimer::singleShot(0, this, [this] { ativadoAgora_ = false; });
    grid_AfterRowActivate();
}

/// A click on the row that is active already leads to its place once more.
void frmEditor::achadoTocado() {
    if (!ativadoAgora_) {
        grid_AfterRowActivate();
    }
}

void frmEditor::moveAchado(int passo) {
    const int total = grade().modelo().rowCount();
    const int ativa = grade().linhaAtiva();
    const int destino = ativa < 0 && passo < 0 ? total - 1 : ativa + passo;
    if (destino >= 0 && destino < total) {
        grade().selecionaLinha(destino);
        grade().setLinhaAtiva(destino);
    }
}

} // namespace tv
