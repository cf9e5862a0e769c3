#include "app/clsTramadorValidador.h"
#include "app/windows/frmObjetos.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/textoQt.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"

#include <algorithm>

/// The grids of the window: one for each section with fields, for as long as the document lives.
namespace tv {

namespace {

constexpr int twipsPorPixel = 15;
constexpr int muitasLinhas = 500; ///< From here on a cascade is quicker with the detail grid unbound.

Qt::Alignment alinhamento(int codigo) {
    switch (codigo) {
    case 2:
        return Qt::AlignHCenter;
    case 3:
        return Qt::AlignRight;
    default:
        return Qt::AlignLeft;
    }
}

std::shared_ptr<const clsTabela> tabelaDe(const clsCampo& campo) {
    if (!campo.hasTabela() || objTramadorValidador == nullptr || !objTramadorValidador->getTabelas()) {
        return nullptr;
    }
    const auto* tabela = objTramadorValidador->getTabelas()->find(campo.getColuna().getTabela());
    return tabela == nullptr ? nullptr : *tabela;
}

bool isLogico(const clsCampo& campo) {
    return campo.getDado().getTipo() == static_cast<int>(ColumnType::Boolean) && !campo.hasTabela();
}

/// Logical cells show what their list offers.
const std::shared_ptr<const clsTabela>& simNao() {
    static const std::shared_ptr<const clsTabela> tabela = [] {
        auto nova = std::make_shared<clsTabela>();
        nova->linha.Add({"True", "S"}, "True");
        nova->linha.Add({"False", "N"}, "False");
        return nova;
    }();
    return tabela;
}

ColunaGrade aparencia(const clsCampo& campo) {
    const clsColuna& coluna = campo.getColuna();
    ColunaGrade nova;
    nova.titulo = paraQt(campo.getNome());
    nova.formato = coluna.getMaskDisplay();
    nova.alinhamento = alinhamento(coluna.getAlinhamento());
    nova.largura = coluna.getLargura() / twipsPorPixel;
    nova.tabela = isLogico(campo) ? simNao() : tabelaDe(campo);
    nova.editavel = true;
    return nova;
}

ColunaGrade aparenciaOculta(const char* nome) {
    ColunaGrade nova;
    nova.titulo = QString::fromLatin1(nome);
    nova.oculta = true;
    nova.largura = 0;
    nova.alinhamento = Qt::AlignRight;
    return nova;
}

} // namespace

void frmTramador::criaGrades() {
    const Routine routine("frmTramador.montaGrid");
    for (const auto& secao : documento_.grids()) {
        auto nova = std::make_unique<GradeDaTela>();
        nova->secao = secao.get();
        nova->painel = new PainelGrade(paraQt(secao->nome), panelGrid_);
        nova->painel->hide();
        nova->painel->resize(panelGrid_->size());
        nova->edicao = new EdicaoGrade(nova->painel->grade(), *secao);
        porSecao_[secao.get()] = nova.get();
        ligaGrade(*nova);
        vincula(*nova);
        grades_.push_back(std::move(nova));
    }
}

void frmTramador::removeGrades() {
    desvinculadas_.clear();
    porSecao_.clear();
    const auto velhas = std::exchange(grades_, {});
    for (const auto& grade : velhas) {
        Grade& controle = grade->painel->grade();
        controle.disconnect(this);
        controle.antesDeRemover = nullptr;
        grade->edicao->disconnect(this);
        controle.modelo().setDados(nullptr);
        grade->painel->hide();
        grade->painel->deleteLater(); // one of its events may be under way
    }
}

void frmTramador::ligaGrade(GradeDaTela& grade) {
    Grade& controle = grade.painel->grade();
    GradeDaTela* const esta = &grade;
    connect(&controle, &Grade::linhaAtivada, this, [this, esta](int linha) { linhaAtivada(*esta, linha); });
    connect(&controle, &Grade::linhasRemovidas, this, [this, esta] { linhasRemovidas(*esta); });
    controle.antesDeRemover = [this, esta](const std::vector<int>& linhas) {
        return antesDeRemover(*esta, linhas);
    };
    connect(grade.edicao, &EdicaoGrade::editou, this, &frmTramador::registra);
    grade.edicao->novaLinha = [this, esta](std::optional<std::size_t> anterior) {
        return regras_.addRow(*esta->secao, anterior);
    };
    connect(grade.edicao, &EdicaoGrade::linhasTerminam, this,
            [this, esta](const std::vector<std::size_t>& linhas) { terminaLinhas(*esta, linhas, false); });
    connect(grade.edicao, &EdicaoGrade::pedeInclusao, this, &frmTramador::addRow);
    connect(grade.edicao, &EdicaoGrade::pedeRemocao, this, [this] {
        if (botao(QStringLiteral("btnRemover")).isEnabled()) {
            btnRemover();
        }
    });
    connect(grade.edicao, &EdicaoGrade::recusou, this, [this](const QString& texto) { avisa(texto, true); });
    controle.aoImprimir = [this, esta](TrabalhoImpressao& trabalho) {
        trabalho.fonteCabecalho = QFont(QStringLiteral("Times New Roman"), 14, QFont::Bold);
        trabalho.subtitulo.clear();
        trabalho.cabecalho = esta->painel->grade().captionVisivel();
        trabalho.fonteRodape = QFont(QStringLiteral("Times New Roman"), 8, QFont::Normal, true);
        trabalho.rodape = QStringLiteral("Arquivo: ") + paraQt(documento_.estado.arquivo) +
                          QStringLiteral("\t\tPágina: <#>");
    };
    controle.aoVisualizar = [esta](PrevisaoImpressao& previsao) {
        previsao.titulo = esta->painel->grade().captionVisivel();
        previsao.icone = frmObjetos::imagem(QStringLiteral("imgPrint"));
    };
}

/// Binds the grid to its section's present record set.
void frmTramador::vincula(GradeDaTela& grade) {
    Grade& controle = grade.painel->grade();
    controle.modelo().setDados(grade.secao->dados);
    grade.edicao->setLinhaPendente(std::nullopt);
    controleLib::gridInitializeLayout(controle);
    formatGrid(grade);
}

void frmTramador::formatGrid(const GradeDaTela& grade) {
    const Routine routine("frmTramador.formatGrid");
    Grade& controle = grade.painel->grade();
    controle.setCaption(paraQt(grade.secao->caption));
    for (const auto& campo : grade.secao->secao->getCampos()) {
        controle.modelo().setColuna(campo->getTag(), aparencia(*campo));
    }
    for (const char* oculta : {"rowID", "rowMaster"}) {
        controle.modelo().setColuna(oculta, aparenciaOculta(oculta));
    }
}

frmTramador::GradeDaTela& frmTramador::daTela(const GradeSecao& grade) {
    const auto achada = porSecao_.find(&grade);
    if (achada == porSecao_.end()) {
        throw Error(errc::invalidCall, "frmTramador", "Não há grade para " + grade.chave);
    }
    return *achada->second;
}

/// The grid goes on top with its caption; the others are hidden behind it.
void frmTramador::poeNoTopo(const GradeSecao& grade) {
    GradeDaTela& nova = daTela(grade);
    nova.painel->grade().setCaption(paraQt(grade.caption));
    nova.painel->resize(panelGrid_->size());
    nova.painel->show();
    nova.painel->raise();
    for (const auto& outra : grades_) {
        if (outra.get() != &nova) {
            outra->painel->hide();
        }
    }
}

void frmTramador::desvinculaDetalhes(const GradeSecao& mestre) {
    for (const auto& grade : grades_) {
        const bool isDetalhe = grade->secao != &mestre && !grade->secao->secao->isSecaoMestre();
        if (isDetalhe && grade->painel->grade().modelo().rowCount() > muitasLinhas) {
            grade->painel->grade().modelo().setDados(nullptr);
            desvinculadas_.push_back(grade.get());
        }
    }
}

void frmTramador::refazDetalhes(const std::vector<GradeSecao*>& refeitas) {
    for (GradeDaTela* grade : std::exchange(desvinculadas_, {})) {
        vincula(*grade);
    }
    for (const GradeSecao* refeita : refeitas) {
        GradeDaTela& grade = daTela(*refeita);
        grade.painel->grade().modelo().recarrega();
        controleLib::gridInitializeLayout(grade.painel->grade());
        formatGrid(grade);
    }
}

} // namespace tv
