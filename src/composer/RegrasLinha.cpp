#include "composer/RegrasLinha.h"

#include "composer/chavesArvore.h"
#include "composer/fundos.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/format.h"
#include "platform/text.h"

#include <limits>
#include <utility>

namespace tv {
namespace {

constexpr std::string_view camposInvalidos = "Os valores dos seguintes campos são inválidos: ";

/// Value of a cell. Throws Error 91 for a row that is not there.
const Value& celula(const GradeSecao& grade, std::size_t linha, std::string_view coluna) {
    if (const Value* valor = grade.dados->cell(linha, grade.dados->columnIndex(coluna))) {
        return *valor;
    }
    throw Error(errc::objectNotSet, "frmTramador", "A linha não existe");
}

/// The text by which a field is judged. A cell that cannot be read counts as empty.
std::string valorParaJulgar(const GradeSecao& grade, std::size_t linha, const clsCampo& campo) {
    std::string valor;
    proceed([&] {
        if (const Value& lido = celula(grade, linha, campo.getTag()); !isNull(lido)) {
            valor = format::format(lido, campo.getColuna().getMaskOutput());
        }
    });
    return valor;
}

/// The key field of a section, or that of its master. `soDoMestre` leaves the first out.
const clsCampo& campoDoTitulo(const SectionOwner& owner, bool soDoMestre) {
    const auto* secao = dynamic_cast<const clsSecao*>(&owner);
    if (!soDoMestre && secao != nullptr && secao->getCampoChave() != nullptr) {
        return *secao->getCampoChave();
    }
    const auto& mestre = owner.getSecaoMestre();
    if (mestre == nullptr || mestre->getCampoChave() == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador", "Não há campo chave em " + owner.getTag());
    }
    return *mestre->getCampoChave();
}

std::int32_t seguinte(std::int32_t rowID) {
    if (rowID == std::numeric_limits<std::int32_t>::max()) {
        throw Error(errc::overflow, "frmTramador.addRow", "Não há mais números de linha");
    }
    return rowID + 1;
}

/// Deletes the rows of one master and shows all rows again.
void apagaDetalhes(RecordSet& dados, const std::string& rowID) {
    dados.Filter("rowMaster = " + rowID);
    if (dados.RecordCount() > 0) {
        dados.MoveFirst();
    }
    while (!dados.EOF_()) {
        dados.Delete();
        dados.Update();
        dados.MoveNext();
    }
    dados.Filter("");
}

} // namespace

RegrasLinha::NovaLinha RegrasLinha::addRow(GradeSecao& grade, std::optional<std::size_t> linhaAtiva) {
    return guarded("frmTramador.addRow", NovaLinha(), [&]() -> NovaLinha {
        if (!documento_.estado.btnAdicionar) {
            return {};
        }
        const Validacao ativa = validateRow(grade, linhaAtiva);
        if (!ativa.valida) {
            return {std::nullopt, ativa.mensagem};
        }
        if (!canAddRow(grade)) {
            return {};
        }
        grade.dados->AddNew();
        const std::size_t nova = grade.dados->currentRow();
        preencheChaves(grade);
        return {nova, {}};
    });
}

/// A master takes the next number; a detail shares the last one and hangs on the fund of the selected node.
void RegrasLinha::preencheChaves(GradeSecao& grade) {
    EstadoDocumento& estado = documento_.estado;
    if (comoSecao(documento_.secaoDaGrade(grade)).isSecaoMestre()) {
        estado.ultimoRowID = seguinte(estado.ultimoRowID);
    }
    grade.dados->set("rowID", estado.ultimoRowID);
    const std::string_view selecionada = documento_.arvore.chaveSelecionada();
    if (documento_.arvoreVisivel() && !selecionada.empty() && selecionada != chaves::raiz) {
        grade.dados->set("rowMaster", chaves::rowIDDaSecao(selecionada));
    }
}

RegrasLinha::Validacao RegrasLinha::validateRow(const GradeSecao& grade,
                                                std::optional<std::size_t> linha) const {
    return guarded("frmTramador.validateRow", Validacao{false, {}}, [&] {
        Validacao resultado;
        if (!linha || documento_.estado.apagando) {
            return resultado;
        }
        std::string mensagem(camposInvalidos);
        for (const std::shared_ptr<const clsCampo>& campo :
             comoSecao(documento_.secaoDaGrade(grade)).getCampos()) {
            if (!campo->isValido(valorParaJulgar(grade, *linha, *campo))) {
                resultado.valida = false;
                mensagem += "\n\t" + campo->getNome();
            }
        }
        if (!resultado.valida) {
            resultado.mensagem = std::move(mensagem);
        }
        return resultado;
    });
}

bool RegrasLinha::canAddRow(const GradeSecao& grade) const {
    return guarded("frmTramador.canAddRow", false, [&] {
        const std::size_t linhas = grade.dados->RecordCount();
        if (linhas == 0) {
            return true;
        }
        const SectionOwner& noAtual = *documento_.estado.noAtual;
        const std::string_view tag = text::trim(grade.tag);
        const clsSecao& secao = noAtual.getTag() == tag ? comoSecao(noAtual) : *noAtual.getSecoes().Item(tag);
        if (secao.isSecaoMestre() || secao.getOcorrencia() == "*") {
            return true;
        }
        return static_cast<double>(linhas) < text::lenientNumber(secao.getOcorrencia());
    });
}

std::int32_t RegrasLinha::getRowID(const GradeSecao& grade, std::size_t linha) const {
    return guarded("frmTramador.getRowID", std::int32_t{0}, [&] {
        return text::toInt32(text::lenientNumber(defaultText(celula(grade, linha, "rowID"))));
    });
}

RegrasLinha::Validacao RegrasLinha::grid_AfterRowUpdate(const GradeSecao& grade, std::size_t linha) {
    return guarded("frmTramador.grid_AfterRowUpdate", Validacao{false, {}}, [&] {
        if (documento_.estado.carregando) {
            return Validacao();
        }
        Validacao validacao = validateRow(grade, linha); // all that canUpdateRow asks
        if (!validacao.valida) {
            return validacao;
        }
        incluiNaArvore(grade, linha, comoSecao(documento_.secaoDaGrade(grade)));
        documento_.estado.salvo = false;
        return validacao;
    });
}

void RegrasLinha::incluiNaArvore(const GradeSecao& grade, std::size_t linha, const clsSecao& secao) {
    const SectionOwner& noAtual = *documento_.estado.noAtual;
    const bool isMestre = secao.isSecaoMestre();
    if (!isMestre && secao.getSecoes().empty()) {
        return;
    }
    const std::int32_t rowID = getRowID(grade, linha);
    const SectionOwner& obj = isMestre ? noAtual : secao;
    const clsCampo& campo = campoDoTitulo(obj, isMestre && grade.tag != noAtual.getTag());
    const std::string titulo =
        format::format(celula(grade, linha, campo.getTag()), campo.getColuna().getMaskDisplay());
    if (documento_.arvoreVisivel()) {
        fundos::addFundo2TreeView(documento_, obj, rowID, titulo);
    }
}

void RegrasLinha::grid_BeforeRowsDeleted(const GradeSecao& grade, const std::vector<std::size_t>& linhas) {
    guarded("frmTramador.grid_BeforeRowsDeleted", [&] {
        EstadoDocumento& estado = documento_.estado;
        if (comoSecao(documento_.secaoDaGrade(grade)).isSecaoMestre()) {
            estado.linhasApagadas.clear();
            for (const std::size_t linha : linhas) {
                estado.linhasApagadas.push_back(std::to_string(getRowID(grade, linha)));
            }
        }
        estado.apagando = true;
        estado.salvo = false;
    });
}

std::vector<LinhaGuardada> RegrasLinha::linhasQueSaem(const GradeSecao& grade,
                                                      const std::vector<std::size_t>& linhas) const {
    std::vector<LinhaGuardada> saem;
    const auto guarda = [&saem](const std::string& chave, const RecordSet& dados, std::size_t linha) {
        saem.push_back({chave, linha, dados.values(linha)});
    };
    for (const std::size_t linha : linhas) {
        guarda(grade.chave, *grade.dados, linha);
    }
    if (!grade.secao->isSecaoMestre()) {
        return saem;
    }
    for (const GradeSecao* detalhe : gradesDeDetalhe(grade)) {
        const std::unique_ptr<RecordSet> dados = detalhe->dados->Clone();
        for (const std::string& rowID : documento_.estado.linhasApagadas) {
            dados->Filter("rowMaster = " + rowID);
            for (const std::size_t linha : dados->rows()) {
                guarda(detalhe->chave, *dados, linha);
            }
        }
    }
    return saem;
}

std::vector<GradeSecao*> RegrasLinha::grid_AfterRowsDeleted(const GradeSecao& grade) {
    std::vector<GradeSecao*> refeitas;
    guarded("frmTramador.grid_AfterRowsDeleted", [&] {
        EstadoDocumento& estado = documento_.estado;
        if (comoSecao(documento_.secaoDaGrade(grade)).isSecaoMestre()) {
            refeitas = gradesDeDetalhe(grade);
            for (const std::string& rowID : estado.linhasApagadas) {
                for (const GradeSecao* detalhe : refeitas) {
                    proceed([&] { apagaDetalhes(*detalhe->dados, rowID); });
                }
                // The keys of funds carry more than this, so the fund stays in the tree until it is reloaded.
                proceed([&] { documento_.arvore.remove("g" + chaves::rowID4(std::stoi(rowID))); });
            }
        }
        estado.salvo = false;
    });
    documento_.estado.apagando = false;
    return refeitas;
}

/// `rowID`s tell masters apart within one top section only, and below the layout itself within it all.
std::vector<GradeSecao*> RegrasLinha::gradesDeDetalhe(const GradeSecao& mestre) const {
    std::vector<GradeSecao*> detalhes;
    for (const std::shared_ptr<GradeSecao>& grade : documento_.grids()) {
        const bool mesmoTopo = mestre.dono == &documento_.layout() || grade->secaoTopo == mestre.secaoTopo;
        if (mesmoTopo && !grade->secao->isSecaoMestre()) {
            detalhes.push_back(grade.get());
        }
    }
    return detalhes;
}

} // namespace tv
