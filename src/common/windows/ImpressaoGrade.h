#pragma once

#include <QFont>
#include <QIcon>
#include <QString>

namespace tv {

/// Header and footer of a grid's print. A text holds up to three pieces parted by tabs, for the left, the
/// middle and the right; a single piece of the header stands in the middle. "<#>" stands for the page's
/// number and "<##>" for the count of pages.
struct TrabalhoImpressao {
    QString cabecalho;
    QFont fonteCabecalho;
    QString rodape;
    QFont fonteRodape;
};

/// The preview's window.
struct PrevisaoImpressao {
    QString titulo;
    QIcon icone;
};

} // namespace tv
