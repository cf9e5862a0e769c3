#pragma once

#include "composer/ArvoreFundos.h"

#include <QHash>
#include <QIcon>
#include <QTreeWidget>

#include <functional>
#include <string>

namespace tv {

/// The tree of funds on the screen. It shows what stands in an ArvoreFundos and follows its changes; the
/// user's choice of a node, by mouse or keyboard, is told by `noEscolhido`.
class VistaFundos : public QTreeWidget {
    Q_OBJECT
public:
    explicit VistaFundos(QWidget* dono = nullptr);
    ~VistaFundos() override;

    /// Shows this tree from now on. It must live as long as the view, or until another one is shown.
    void acompanha(ArvoreFundos& arvore);

    /// The item of a node's key, or null.
    QTreeWidgetItem* item(const std::string& chave) const;
    /// The key of an item's node.
    static std::string chaveDe(const QTreeWidgetItem& item);

Q_SIGNALS:
    /// The user has chosen a node, maybe the one that was chosen before.
    void noEscolhido(const QString& chave);

private:
    void ouve(const ArvoreFundos::Mudanca& mudanca);
    void inclui(const NoArvore& no);
    void renomeia(const NoArvore& no);
    void esquece(QTreeWidgetItem* item);
    void poe(const NoArvore& no, QTreeWidgetItem* item);
    void mudouAtual(QTreeWidgetItem* atual);
    void clicado(QTreeWidgetItem* item);
    const QIcon& icone(const std::string& chave);

    ArvoreFundos* arvore_ = nullptr;
    QHash<const NoArvore*, QTreeWidgetItem*> itens_;
    QHash<QString, QIcon> icones_;
    QTreeWidgetItem* escolhidoAoApertar_ = nullptr; ///< Told already when the mouse button went down on it.
};

} // namespace tv
