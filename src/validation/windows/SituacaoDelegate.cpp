#include "validation/windows/SituacaoDelegate.h"

#include "common/windows/ModeloGrade.h"
#include "validation/LoteDeArquivos.h"

#include <QColor>

namespace tv {

namespace {

bool marcado(const ModeloGrade& modelo, int linha, std::string_view coluna) {
    const Value valor = modelo.valor(linha, coluna);
    const bool* marca = std::get_if<bool>(&valor);
    return marca != nullptr && *marca;
}

} // namespace

void SituacaoDelegate::initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const {
    DesenhoGrade::initStyleOption(opcao, indice);
    const auto* modelo = qobject_cast<const ModeloGrade*>(indice.model());
    if (modelo == nullptr || !marcado(*modelo, indice.row(), lote::coluna::validou)) {
        return;
    }
    const bool valido = marcado(*modelo, indice.row(), lote::coluna::isValid);
    opcao->backgroundBrush = valido ? QColor(205, 238, 205) : QColor(250, 208, 204);
}

} // namespace tv
