#pragma once

#include <QIcon>
#include <QObject>
#include <QString>
#include <QStringList>

#include <map>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace tv {

/// What can be clicked: known by its identifier everywhere.
struct Ferramenta {
    QString identificador;
    QString caption; ///< "&" marks the mnemonic.
    QIcon imagem{};
    QString categoria = QStringLiteral("General");
};

/// The menu bar and the tool bar of a window, which hold tools by identifier. A tool is defined once and can
/// stand in several places; the same action shows in all of them and bears the identifier as its object
/// name, as a menu does. Clicks are reported by identifier.
///
/// Identifiers are compared to the letter. Naming a tool or a menu that is not defined throws Error 5,
/// defining one twice Error 457.
class Ferramentas : public QObject {
    Q_OBJECT
public:
    enum class Tipo { Botao, Menu, Separador };

    /// Gives `janela` its menu bar and a tool bar `toolbar`, both empty.
    explicit Ferramentas(QMainWindow& janela);
    ~Ferramentas() override;

    /// Defines a tool; it shows nowhere yet.
    void define(const Ferramenta& ferramenta, Tipo tipo = Tipo::Botao);
    /// Takes a tool out of all places and forgets it.
    void remove(const QString& identificador);
    bool existe(const QString& identificador) const;
    /// All tools that are defined, in alphabetical order.
    QStringList identificadores() const;
    const Ferramenta& ferramenta(const QString& identificador) const;
    void setCaption(const QString& identificador, const QString& caption);

    /// Puts a menu at the end of the menu bar, a tool at the end of the tool bar or of a menu.
    void incluiNaBarraDeMenus(const QString& menu);
    void incluiNaBarra(const QString& identificador);
    void incluiNoMenu(const QString& menu, const QString& identificador);
    /// Separators of fixed places, which no identifier reaches.
    void separaNaBarra();
    void separaNoMenu(const QString& menu);

    /// Takes the first tool with this identifier out of a menu; it stays defined.
    void removeDoMenu(const QString& menu, const QString& identificador);
    /// What stands in a menu, in order. A separator of a fixed place shows as an empty identifier.
    QStringList noMenu(const QString& menu) const;

    /// The action of a tool; that of a menu opens it. A separator has one in each place and none here.
    QAction* acao(const QString& identificador) const;
    QMenu* menu(const QString& identificador) const;

Q_SIGNALS:
    void clicada(const QString& identificador);

private:
    struct Entrada {
        Ferramenta ferramenta;
        Tipo tipo = Tipo::Botao;
        QAction* acao = nullptr;
        QMenu* menu = nullptr;
    };
    const Entrada& entrada(const QString& identificador) const;
    QAction* criaAcao(const Ferramenta& ferramenta);
    void nomeiaBotao(const Entrada& entrada);

    QMainWindow& janela_;
    QToolBar* barra_;
    std::map<QString, Entrada> entradas_;
};

/// A text that shows as it is where "&" would mark a mnemonic.
QString semMnemonico(QString texto);

} // namespace tv
