#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace tv {

class Grade;

/// The column headers of a grid, in the colours of its look.
class CabecalhoGrade : public QHeaderView {
    Q_OBJECT
public:
    explicit CabecalhoGrade(Grade& grade);

protected:
    void paintSection(QPainter* pintor, const QRect& lugar, int coluna) const override;

private:
    const Grade& grade_;
};

/// How the rows of a grid are drawn: the active row on its own background, framed when it is selected too;
/// a text that does not fit its cell is told in full by a tool tip.
class DesenhoGrade : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit DesenhoGrade(Grade& grade);

    void paint(QPainter* pintor, const QStyleOptionViewItem& opcao, const QModelIndex& indice) const override;
    bool helpEvent(QHelpEvent* evento, QAbstractItemView* vista, const QStyleOptionViewItem& opcao,
                   const QModelIndex& indice) override;

protected:
    void initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const override;

private:
    const Grade& grade_;
};

} // namespace tv
