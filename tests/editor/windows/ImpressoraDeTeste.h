#pragma once

#include <QPageLayout>
#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>
#include <QVariant>

#include <map>
#include <vector>

namespace tv::test {

/// A piece of text as it was put on paper, with its baseline's start in dots.
struct TextoImpresso {
    QString texto;
    QPointF lugar;
    QColor cor;
    qreal pontos; ///< Size of the font.
};

/// Takes down what is painted on each page.
class Papel : public QPaintEngine {
public:
    Papel()
        : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override {
        paginas.emplace_back();
        return !recusa;
    }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawTextItem(const QPointF& lugar, const QTextItem& item) override {
        paginas.back().push_back({item.text(), lugar, painter()->pen().color(), item.font().pointSizeF()});
    }
    Type type() const override { return User; }

    std::vector<std::vector<TextoImpresso>> paginas;
    bool recusa = false;
};

/// The job's side of a printer of 1440 dots per inch, so that a dot is a twip, on A4 paper.
class Trabalho : public QPrintEngine {
public:
    explicit Trabalho(Papel& papel, const QMarginsF& naoImprimivelEmPontos)
        : papel_(&papel)
        , layout_(QPageSize(QPageSize::A4), QPageLayout::Portrait, naoImprimivelEmPontos) {}

    void setProperty(PrintEnginePropertyKey chave, const QVariant& valor) override {
        propriedades_[chave] = valor;
    }
    QVariant property(PrintEnginePropertyKey chave) const override {
        switch (chave) {
        case PPK_QPageLayout:
            return QVariant::fromValue(layout_);
        case PPK_Resolution:
            return resolucao;
        case PPK_FullPage:
            return layout_.mode() == QPageLayout::FullPageMode;
        case PPK_PaperRect:
            return layout_.fullRectPixels(resolucao);
        case PPK_PageRect:
            return layout_.paintRectPixels(resolucao);
        default:
            break;
        }
        const auto achada = propriedades_.find(chave);
        return achada == propriedades_.end() ? QVariant() : achada->second;
    }
    bool newPage() override {
        if (paginasPossiveis-- <= 0) {
            return false;
        }
        papel_->paginas.emplace_back();
        return true;
    }
    bool abort() override { return true; }
    int metric(QPaintDevice::PaintDeviceMetric medida) const override {
        const QRect pagina = layout_.paintRectPixels(resolucao);
        switch (medida) {
        case QPaintDevice::PdmWidth:
            return pagina.width();
        case QPaintDevice::PdmHeight:
            return pagina.height();
        case QPaintDevice::PdmDpiX:
        case QPaintDevice::PdmDpiY:
        case QPaintDevice::PdmPhysicalDpiX:
        case QPaintDevice::PdmPhysicalDpiY:
            return resolucao;
        case QPaintDevice::PdmDepth:
            return 32;
        default:
            return 1;
        }
    }
    QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

    static constexpr int resolucao = 1440;
    int paginasPossiveis = 1'000'000; ///< After the first one.

private:
    Papel* papel_;
    QPageLayout layout_;
    std::map<PrintEnginePropertyKey, QVariant> propriedades_;
};

/// A printer that prints into memory.
class ImpressoraDeTeste : public QPrinter {
public:
    explicit ImpressoraDeTeste(const QMarginsF& naoImprimivelEmPontos = {})
        : trabalho(papel, naoImprimivelEmPontos) {
        setEngines(&trabalho, &papel);
    }

    Papel papel;
    Trabalho trabalho;
};

} // namespace tv::test
