#pragma once

#include <QObject>
#include <QUrl>

#include <vector>

namespace tv::test {

/// Takes the documents that the program opens in the desktop while it lives.
class DocumentosAbertos : public QObject {
    Q_OBJECT
public:
    DocumentosAbertos();
    ~DocumentosAbertos() override;

    const std::vector<QUrl>& vistos() const { return vistos_; }

    Q_SLOT void abre(const QUrl& endereco);
    Q_SIGNAL void abriu(const QUrl& endereco);

private:
    std::vector<QUrl> vistos_;
};

} // namespace tv::test
