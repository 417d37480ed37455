// The program of the production server's tests. It starts the T-SQL server
// once for every test class, and tells CTest that it was skipped (status 77)
// when the server is not on this machine. "--solo Clase" runs one class alone,
// "--sin Clase" all others, so that a long class can run beside the rest.
#include "prueba.h"
#include "tsql.h"

#include <QApplication>
#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QByteArray solo, sin;
    std::vector<char*> argumentos;
    for (int i = 0; i < argc; ++i) {
        const QByteArray a(argv[i]);
        if ((a == "--solo" || a == "--sin") && i + 1 < argc)
            (a == "--solo" ? solo : sin) = argv[++i];
        else
            argumentos.push_back(argv[i]);
    }
    ServidorTsql* servidor = ServidorTsql::instancia();
    if (!servidor) {
        std::printf("Omitida: %s\n", qPrintable(ServidorTsql::motivo()));
        return ServidorTsql::omitido() ? 77 : 1;
    }
    std::printf("Servidor T-SQL en el puerto %u, desplegado y con los datos de demostración en %.1f s\n",
                unsigned(servidor->puerto()), servidor->segundosDePreparacion());
    int fallos = 0;
    for (const auto& fabrica : Pruebas::registro()) {
        std::unique_ptr<QObject> prueba(fabrica());
        const QByteArray clase = prueba->metaObject()->className();
        if ((!solo.isEmpty() && clase != solo) || (!sin.isEmpty() && clase == sin))
            continue;
        fallos += QTest::qExec(prueba.get(), int(argumentos.size()), argumentos.data());
    }
    ServidorTsql::terminar();
    return fallos == 0 ? 0 : 1;
}
