#include "common/windows/frmAbout.h"

#include "app/clsTramadorValidador.h"
#include "app/windows/frmObjetos.h"
#include "common/windows/SystemInfo.h"
#include "common/windows/Vinculo.h"
#include "common/windows/textoQt.h"
#include "editor/windows/WindowsAPI.h"
#include "logging/Routine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tv {

namespace {

constexpr int alturaLogotipo = 64;
constexpr int larguraDescricao = 380;

const clsTramadorValidador& catalogo() {
    if (objTramadorValidador == nullptr) {
        throw Error(errc::objectNotSet, "objTramadorValidador", "O catálogo não foi carregado");
    }
    return *objTramadorValidador;
}

template<typename Rotulo>
Rotulo* novoRotulo(const QString& nome, const QString& descricao, QWidget* dono) {
    auto* rotulo = new Rotulo(dono);
    rotulo->setObjectName(nome);
    rotulo->setAccessibleName(descricao);
    rotulo->setTextFormat(Qt::PlainText);
    return rotulo;
}

/// What a screen reader says of a label: what it is and what it shows.
void mostra(QLabel& rotulo, const QString& texto) {
    rotulo.setText(texto);
    rotulo.setAccessibleDescription(texto);
}

} // namespace

frmAbout::frmAbout(QWidget* dono)
    : QDialog(dono) {
    setObjectName(QStringLiteral("frmAbout"));
    setAccessibleName(QStringLiteral("Sobre o programa"));
    monta();
    guarded("frmAbout.Form_Load", [this] { carrega(); });
}

frmAbout::~frmAbout() = default;

void frmAbout::monta() {
    picIcon_ = novoRotulo<QLabel>(QStringLiteral("picIcon"), QStringLiteral("Logotipo"), this);
    auto* cmdOk = new QPushButton(QStringLiteral("&OK"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setAccessibleName(QStringLiteral("OK"));
    cmdOk->setDefault(true);
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);

    auto* cima = new QHBoxLayout;
    cima->setSpacing(16);
    cima->addWidget(picIcon_, 0, Qt::AlignTop);
    cima->addLayout(montaIdentidade());
    auto* tudo = new QVBoxLayout(this);
    tudo->setSizeConstraint(QLayout::SetFixedSize);
    tudo->setSpacing(16);
    tudo->addLayout(cima);
    tudo->addWidget(cmdOk, 0, Qt::AlignRight);
    cmdOk->setFocus();
}

QLayout* frmAbout::montaIdentidade() {
    lblTitle_ = novoRotulo<QLabel>(QStringLiteral("lblTitle"), QStringLiteral("Título"), this);
    QFont grande = lblTitle_->font();
    grande.setBold(true);
    grande.setPointSizeF(grande.pointSizeF() * 1.5);
    lblTitle_->setFont(grande);
    lblVersion_ = novoRotulo<QLabel>(QStringLiteral("lblVersion"), QStringLiteral("Versão"), this);
    lblDescription_ = novoRotulo<QLabel>(QStringLiteral("lblDescription"), QStringLiteral("Descrição"), this);
    lblDescription_->setWordWrap(true);
    lblDescription_->setFixedWidth(larguraDescricao);
    auto* site = novoRotulo<Vinculo>(QStringLiteral("lblSite"), QStringLiteral("Abrir o site"), this);
    auto* email = novoRotulo<Vinculo>(QStringLiteral("lblEmail"), QStringLiteral("Escrever um e-mail"), this);
    connect(site, &Vinculo::acionado, this, &frmAbout::lblSite_Click);
    connect(email, &Vinculo::acionado, this, &frmAbout::lblEmail_Click);
    lblSite_ = site;
    lblEmail_ = email;

    auto* identidade = new QVBoxLayout;
    for (QLabel* rotulo : {lblTitle_, lblVersion_, lblDescription_, lblSite_, lblEmail_}) {
        identidade->addWidget(rotulo);
    }
    return identidade;
}

void frmAbout::carrega() {
    const clsTramadorValidador& dados = catalogo();
    const QString titulo = paraQt(dados.getTitulo());
    setWindowTitle(QStringLiteral("Sobre ") + titulo);
    mostra(*lblVersion_, QStringLiteral("Versão ") + paraQt(dados.getVersao()));
    mostra(*lblTitle_, titulo);
    mostra(*lblDescription_, paraQt(dados.getDescricao()));
    mostra(*lblSite_, paraQt(dados.getSite()));
    mostra(*lblEmail_, paraQt(dados.getEmail()));
    picIcon_->setPixmap(frmObjetos::logotipo(alturaLogotipo));
}

void frmAbout::lblSite_Click() {
    guarded("frmAbout.lblSite_Click", [] { WindowsAPI::abreDocumento(paraQt(catalogo().getSiteLink())); });
}

void frmAbout::lblEmail_Click() {
    guarded("frmAbout.lblEmail_Click", [] {
        const clsTramadorValidador& dados = catalogo();
        QString assunto = paraQt("[" + dados.getTitulo() + " - " + dados.getVersao() + "] ");
        QString corpo;
        WindowsAPI::abreEmail(paraQt(dados.getEmailLink()), assunto, corpo);
    });
}

void frmAbout::informacoesDoSistema() {
    SystemInfo::mostra();
}

} // namespace tv
