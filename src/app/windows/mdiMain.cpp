#include "app/windows/mdiMain.h"

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/Ferramentas.h"
#include "app/windows/biblioteca.h"
#include "app/windows/ferramentasPrincipais.h"
#include "app/windows/frmObjetos.h"
#include "common/windows/Janela.h"
#include "common/windows/frmSelecionaBoleto.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/windows/frmTramador.h"
#include "editor/windows/WindowsAPI.h"
#include "logging/Routine.h"
#include "platform/format.h"
#include "platform/text.h"
#include "validation/windows/frmValidador.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace tv {

namespace {

using namespace ferramenta;

std::unique_ptr<mdiMain>& unica() {
    static std::unique_ptr<mdiMain> janela;
    return janela;
}

/// Numbers in documents take the decimal point, so the program refuses to run where the system's own
/// separator is another one: it shows how to change it and ends.
void confereSeparadorDecimal() {
    if (WindowsAPI::textoDoLocal(WindowsAPI::separadorDecimal) == QLatin1String(".")) {
        return;
    }
    mensagem::mostra(QStringLiteral("O separador decimal configurado em Opções Regionais está incorreto para "
                                    "o \npadrão de validação dos arquivos XML Veldor.\n"
                                    "Clique em OK para ver as instruções de configuração."),
                     mensagem::Icone::Critico, QStringLiteral("Erro na configuração das Opções Regionais"));
    WindowsAPI::abreDocumento(caminhoQt(aplicacao::arquivo("\\XSD\\help2.html")));
    biblioteca::encerraProcesso(EXIT_FAILURE);
}

const clsTramadorValidador& catalogo() {
    if (objTramadorValidador == nullptr) {
        throw Error(errc::objectNotSet, "objTramadorValidador", "O catálogo não foi carregado");
    }
    return *objTramadorValidador;
}

std::string numeroDaJanela(std::int16_t numero) {
    return format::format(Value(static_cast<std::int32_t>(numero)), "00000");
}

} // namespace

mdiMain& mdiMain::instancia() {
    if (unica() == nullptr) {
        // The windows must be gone before the application is.
        static const bool registrada = (qAddPostRoutine(&mdiMain::destroi), true);
        static_cast<void>(registrada);
        unica().reset(new mdiMain);
    }
    return *unica();
}

bool mdiMain::existe() noexcept {
    return unica() != nullptr;
}

void mdiMain::destroi() {
    unica().reset();
}

mdiMain::mdiMain() {
    setObjectName(QStringLiteral("mdiMain"));
    setAccessibleName(QStringLiteral("Janela principal"));
    montaArea();
    ferramentas_ = new Ferramentas(*this);
    montaFerramentas(*ferramentas_);
    connect(ferramentas_, &Ferramentas::clicada, this, &mdiMain::clica);
    montaAtalhos();
    confereSeparadorDecimal();
    setWindowState(Qt::WindowMaximized);
    objetos_ = std::make_unique<frmObjetos>();
}

mdiMain::~mdiMain() {
    // The children tell the main window of their end, so they go while it is whole.
    const std::unique_ptr<QWidget> area(takeCentralWidget());
}

void mdiMain::montaArea() {
    area_ = new QMdiArea(this);
    area_->setObjectName(QStringLiteral("areaJanelas"));
    area_->setAccessibleName(QStringLiteral("Janelas abertas"));
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(area_);
}

void mdiMain::montaAtalhos() {
    const auto atalho = [this](const QKeySequence& teclas, auto acao) {
        connect(new QShortcut(teclas, this), &QShortcut::activated, this, acao);
    };
    atalho(QKeySequence(Qt::CTRL | Qt::Key_Tab), [this] { area_->activateNextSubWindow(); });
    atalho(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), [this] { area_->activatePreviousSubWindow(); });
    const auto fecha = [this] {
        if (Janela* ativa = janelaAtiva()) {
            ativa->closeWindow();
        }
    };
    atalho(QKeySequence(Qt::CTRL | Qt::Key_F4), fecha);
    atalho(QKeySequence(Qt::CTRL | Qt::Key_W), fecha);
}

void mdiMain::addJanela(Janela& janela) {
    const QString id = janela_ + paraQt(numeroDaJanela(counter_));
    janela.setJanelaID(id);
    janela.setAutoRedraw(true);
    janelas_.Add(&janela, paraUtf8(id));
    ferramentas_->define({id, semMnemonico(janela.Caption()), janela.Picture()});
    if (janelas_.Count() == 1) {
        ferramentas_->incluiNoMenu(janelasID, separatorID);
    }
    ferramentas_->incluiNoMenu(janelasID, id);
    connect(&janela, &QWidget::windowTitleChanged, ferramentas_, [this, id](const QString& titulo) {
        proceed([&] { ferramentas_->setCaption(id, semMnemonico(titulo)); });
    });
    connect(&janela, &QObject::destroyed, this, [this, id] { esquece(id); });
    if (counter_ == std::numeric_limits<std::int16_t>::max()) {
        throw Error(errc::overflow, "mdiMain.addJanela", "Estouro na numeração das janelas");
    }
    ++counter_;
}

void mdiMain::removeJanela(Janela& janela) {
    const QString id = janela.janelaID();
    proceed([&] { ferramentas_->removeDoMenu(janelasID, id); });
    proceed([&] { ferramentas_->remove(id); });
    janela.ZOrder();
    esquece(id);
    if (!janela.descarregada()) {
        janela.closeWindow();
    }
}

void mdiMain::esquece(const QString& janelaID) {
    proceed([&] { ferramentas_->remove(janelaID); });
    proceed([&] { janelas_.Remove(paraUtf8(janelaID)); });
}

void mdiMain::buildMenu() {
    requireLogger();
    const Routine routine("mdiMain.buildMenu");
    esvaziaMenu(tramadorMenuID);
    esvaziaMenu(validadorMenuID);
    proceed([this] {
        for (const auto& boleto : catalogo().getBoletos()) {
            incluiLayout(*boleto);
        }
    });
    encerraMenu(tramadorMenuID);
    encerraMenu(validadorMenuID);
}

void mdiMain::esvaziaMenu(const QString& menu) {
    const QStringList conteudo = ferramentas_->noMenu(menu);
    for (const QString& identificador : conteudo) {
        proceed([&] { ferramentas_->removeDoMenu(menu, identificador); });
        if (identificador != separatorID && identificador != appClose) {
            proceed([&] { ferramentas_->remove(identificador); });
        }
    }
}

void mdiMain::incluiLayout(const clsBoleto& boleto) {
    const QString tag = paraQt(text::upper(boleto.getTag()));
    const QString caption = semMnemonico(paraQt(boleto.getNome() + " - " + boleto.getVersao()));
    const auto inclui = [&](const QString& menu, const QString& identificador, const QString& imagem) {
        proceed([&] {
            ferramentas_->define({identificador, caption, frmObjetos::imagem(imagem)});
            ferramentas_->incluiNoMenu(menu, identificador);
        });
    };
    if (boleto.hasTramador()) {
        inclui(tramadorMenuID, tramador_ + tag, QStringLiteral("imgBoleto"));
    }
    if (boleto.hasValidador()) {
        inclui(validadorMenuID, validador_ + tag, QStringLiteral("imgValidador"));
    }
}

void mdiMain::encerraMenu(const QString& menu) {
    proceed([&] {
        if (catalogo().getBoletos().Count() >= 1) {
            ferramentas_->incluiNoMenu(menu, separatorID);
        }
    });
    proceed([&] { ferramentas_->incluiNoMenu(menu, appClose); });
}

void mdiMain::closeAllWindows() {
    guarded("mdiMain.closeAllWindows", [this] {
        for (const QPointer<Janela>& janela : filhasDaUltima()) {
            if (janela != nullptr) {
                janela->closeWindow();
            }
        }
        throw Error(errc::memberNotOffered, "frmObjetos",
                    "A janela frmObjetos não oferece a operação closeWindow");
    });
}

std::vector<QPointer<Janela>> mdiMain::filhasDaUltima() const {
    std::vector<QPointer<Janela>> abertas;
    const auto molduras = area_->subWindowList(QMdiArea::CreationOrder);
    for (const QMdiSubWindow* moldura : molduras) {
        if (auto* janela = qobject_cast<Janela*>(moldura->widget())) {
            abertas.emplace_back(janela);
        }
    }
    std::reverse(abertas.begin(), abertas.end());
    return abertas;
}

bool mdiMain::temFilhas() const {
    const std::vector<QPointer<Janela>> filhas = filhasDaUltima();
    return std::any_of(filhas.begin(), filhas.end(),
                       [](const QPointer<Janela>& janela) { return !janela->descarregada(); });
}

void mdiMain::selectTramador() {
    frmSelecionaBoleto selecao(this);
    selecao.tramador();
    if (const auto boleto = selecao.getBoleto()) {
        abrirTramador(boleto);
    }
}

void mdiMain::selectValidador() {
    frmSelecionaBoleto selecao(this);
    selecao.validador();
    if (const auto boleto = selecao.getBoleto()) {
        abrirValidador(boleto);
    }
}

void mdiMain::abrirValidador(const std::shared_ptr<const clsBoleto>& boleto) {
    const QPointer<frmValidador> janela = &criaJanela<frmValidador>();
    janela->abrir(boleto);
    // A window that could not open has told so and closed itself.
    if (janela != nullptr && !janela->descarregada()) {
        addJanela(*janela);
    }
}

void mdiMain::abrirTramador(const std::shared_ptr<const clsBoleto>& boleto) {
    const QPointer<frmTramador> janela = &criaJanela<frmTramador>();
    janela->abrir(boleto);
    // A window that could not open has told so and closed itself.
    if (janela != nullptr && !janela->descarregada()) {
        addJanela(*janela);
        janela->show();
    }
}

void mdiMain::recebe(std::unique_ptr<Janela> janela) {
    QMdiSubWindow* moldura = area_->addSubWindow(janela.release());
    moldura->hide();
    // The main window's keys close the child; a second owner of the same keys would stop them both.
    const auto acoes = moldura->systemMenu()->actions();
    for (QAction* acao : acoes) {
        acao->setShortcuts(QList<QKeySequence>());
    }
}

Janela* mdiMain::janelaAtiva() const {
    const QMdiSubWindow* moldura = area_->activeSubWindow();
    return moldura == nullptr ? nullptr : qobject_cast<Janela*>(moldura->widget());
}

void mdiMain::closeEvent(QCloseEvent* evento) {
    for (const QPointer<Janela>& janela : filhasDaUltima()) {
        if (janela != nullptr) {
            janela->closeWindow();
        }
        if (janela != nullptr && !janela->descarregada()) {
            evento->ignore();
            return;
        }
    }
    evento->accept();
    QCoreApplication::exit(EXIT_SUCCESS);
}

} // namespace tv
