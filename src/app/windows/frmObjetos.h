#pragma once

#include <QIcon>
#include <QString>
#include <QWidget>

namespace tv {

/// The hidden window that holds the shared pictures. Every window takes its pictures from here by key
/// ("imgBoleto", "imgSave", ...).
class frmObjetos : public QWidget {
    Q_OBJECT
public:
    frmObjetos();
    ~frmObjetos() override;

    /// The picture of a key, clear at 16, 24 and 48 pixels on light and dark themes. Keys compare without
    /// regard to case. Throws Error 35601 (the number of a picture that is not there) for an unknown key.
    static QIcon imagem(const QString& chave);
    /// The same with black strokes, for what is light on every theme: the rows of grids, and paper.
    static QIcon imagemSobreClaro(const QString& chave);
    /// The product's logo (`imgTORVA`), as wide as its drawing asks for at that height, in device-independent
    /// pixels.
    static QPixmap logotipo(int altura);
};

} // namespace tv
