#include "app/windows/biblioteca.h"
#include "app/windows/preparo.h"

#include <QApplication>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    return tv::biblioteca::executa([] { return tv::preparo::pastaDoProcesso(); });
}
