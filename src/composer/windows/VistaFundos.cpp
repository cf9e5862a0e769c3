#include "composer/windows/VistaFundos.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QHeaderView>
#include <QSignalBlocker>

#include <utility>

namespace tv {

namespace {

constexpr int papelChave = Qt::UserRole;
constexpr int recuo = 12; // pixels: the pane is narrow

} // namespace

VistaFundos::VistaFundos(QWidget* dono)
    : QTreeWidget(dono) {
    setColumnCount(1);
    setHeaderHidden(true);
    setIndentation(recuo);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    connect(this, &QTreeWidget::currentItemChanged, this, &VistaFundos::mudouAtual);
    connect(this, &QTreeWidget::itemClicked, this, &VistaFundos::clicado);
}

VistaFundos::~VistaFundos() {
    if (arvore_ != nullptr) {
        arvore_->setOuvinte({});
    }
}

void VistaFundos::acompanha(ArvoreFundos& arvore) {
    if (arvore_ != nullptr) {
        arvore_->setOuvinte({});
    }
    arvore_ = &arvore;
    arvore.setOuvinte([this](const ArvoreFundos::Mudanca& mudanca) {
        const QSignalBlocker silencio(*this); // only the user's choices are told
        ouve(mudanca);
    });
}

QTreeWidgetItem* VistaFundos::item(const std::string& chave) const {
    return arvore_ == nullptr ? nullptr : itens_.value(arvore_->find(chave));
}

std::string VistaFundos::chaveDe(const QTreeWidgetItem& item) {
    return paraUtf8(item.data(0, papelChave).toString());
}

void VistaFundos::ouve(const ArvoreFundos::Mudanca& mudanca) {
    using Tipo = ArvoreFundos::Mudanca::Tipo;
    switch (mudanca.tipo) {
    case Tipo::Limpa:
        itens_.clear();
        escolhidoAoApertar_ = nullptr;
        clear();
        break;
    case Tipo::Incluido:
        inclui(*mudanca.no);
        break;
    case Tipo::Renomeado:
        renomeia(*mudanca.no);
        break;
    case Tipo::Removido:
        esquece(itens_.value(mudanca.no));
        delete itens_.take(mudanca.no);
        break;
    case Tipo::Expandido:
        itens_.value(mudanca.no)->setExpanded(mudanca.no->expandido);
        break;
    case Tipo::Selecionado:
        setCurrentItem(mudanca.no == nullptr ? nullptr : itens_.value(mudanca.no));
        break;
    }
}

void VistaFundos::inclui(const NoArvore& no) {
    auto* novo = new QTreeWidgetItem({paraQt(no.texto)});
    novo->setData(0, papelChave, paraQt(no.chave));
    novo->setIcon(0, icone(no.imagem));
    novo->setToolTip(0, paraQt(no.texto));
    itens_.insert(&no, novo);
    poe(no, novo);
}

void VistaFundos::poe(const NoArvore& no, QTreeWidgetItem* item) {
    if (no.pai == nullptr) {
        addTopLevelItem(item);
    } else {
        itens_.value(no.pai)->insertChild(static_cast<int>(ArvoreFundos::posicao(no)), item);
    }
}

/// The new text may have another place among its siblings.
void VistaFundos::renomeia(const NoArvore& no) {
    QTreeWidgetItem* item = itens_.value(&no);
    item->setText(0, paraQt(no.texto));
    item->setToolTip(0, paraQt(no.texto));
    QTreeWidgetItem* pai = item->parent();
    if (pai == nullptr || pai->indexOfChild(item) == static_cast<int>(ArvoreFundos::posicao(no))) {
        return;
    }
    const bool aberto = item->isExpanded();
    QTreeWidgetItem* atual = currentItem();
    pai->removeChild(item);
    poe(no, item);
    item->setExpanded(aberto);
    setCurrentItem(atual);
}

void VistaFundos::esquece(QTreeWidgetItem* item) {
    if (escolhidoAoApertar_ == item) {
        escolhidoAoApertar_ = nullptr;
    }
}

void VistaFundos::mudouAtual(QTreeWidgetItem* atual) {
    if (atual != nullptr) {
        escolhidoAoApertar_ = QApplication::mouseButtons() == Qt::NoButton ? nullptr : atual;
        Q_EMIT noEscolhido(paraQt(chaveDe(*atual)));
    }
}

void VistaFundos::clicado(QTreeWidgetItem* item) {
    if (std::exchange(escolhidoAoApertar_, nullptr) != item) {
        Q_EMIT noEscolhido(paraQt(chaveDe(*item)));
    }
}

const QIcon& VistaFundos::icone(const std::string& chave) {
    const QString nome = paraQt(chave);
    auto achado = icones_.find(nome);
    if (achado == icones_.end()) {
        achado = icones_.insert(nome, QIcon());
        proceed([&] { *achado = frmObjetos::imagem(nome); });
    }
    return *achado;
}

} // namespace tv
