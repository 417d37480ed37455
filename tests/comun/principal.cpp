#include "prueba.h"

#include <QApplication>
#include <memory>

namespace Pruebas {
std::vector<Fabrica>& registro()
{
    static std::vector<Fabrica> r;
    return r;
}
} // namespace Pruebas

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
