#pragma once

#include <QDialog>

namespace tv {

/// The product's identity with links to its site and its mail address.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* dono);
    ~frmAbout() override;
};

} // namespace tv
