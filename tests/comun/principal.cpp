#include "prueba.h"

#include <QApplication>
#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int fallos = 0;
    for (const auto& fabrica : Pruebas::registro()) {
        std::unique_ptr<QObject> prueba(fabrica());
        fallos += QTest::qExec(prueba.get(), argc, argv);
    }
    return fallos == 0 ? 0 : 1;
}
