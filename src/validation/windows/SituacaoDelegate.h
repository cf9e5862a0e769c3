#pragma once

#include "common/windows/DesenhoGrade.h"

namespace tv {

/// Paints the status cell of a file that was checked: soft green when it passed, soft red when it did not.
class SituacaoDelegate : public DesenhoGrade {
    Q_OBJECT
public:
    using DesenhoGrade::DesenhoGrade;

protected:
    void initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const override;
};

} // namespace tv
