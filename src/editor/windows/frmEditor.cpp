#include "editor/windows/frmEditor.h"

#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Files.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace tv {

frmEditor::frmEditor()
    : Janela(QStringLiteral("frmEditor")) {
    auto* texto = new QPlainTextEdit(this);
    texto->setObjectName(QStringLiteral("txtXML"));
    texto->setAccessibleName(QStringLiteral("Texto do arquivo XML"));
    auto* disposicao = new QVBoxLayout(this);
    disposicao->addWidget(texto);
}

frmEditor::~frmEditor() = default;

void frmEditor::abrir(const std::shared_ptr<const Resultados>& resultados,
                      const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo) {
    resultados_ = resultados;
    boleto_ = boleto;
    setWindowTitle(QStringLiteral("Editor de XML [%1]").arg(arquivo.trimmed()));
    guarded("frmEditor.abrir", [&] {
        auto* texto = findChild<QPlainTextEdit*>(QStringLiteral("txtXML"));
        texto->setPlainText(paraQt(files::readAll(paraCaminho(arquivo))));
    });
    mostra();
}

} // namespace tv
