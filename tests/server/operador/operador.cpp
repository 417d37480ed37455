// One operator at the counter, in a process of its own, for the tests and the
// benchmark of concurrent entry: the entry screen on a database file entering
// transactions one after the other, a pause of typing before each.
//   operador_de_entrada <database file> <entries> <tag> <most pause in ms>
// Each note is "<tag>-<n>/<sequence shown when it was typed>". Prints
// "guardadas <n>" at the end; a run-time failure also prints its number and
// text and ends with status 1.
#include "despliegue.h"
#include "fallo.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "movimientos.h"

#include <QApplication>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QThread>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 5) {
        std::fprintf(stderr, "uso: operador_de_entrada <base> <entradas> <marca> <pausa ms>\n");
        return 2;
    }
    const int entradas = args[2].toInt(), pausa = args[4].toInt();
    Mensajes::Reemplazar([](const QString& texto, int, const QString&) {
        std::fprintf(stderr, "mensaje: %s\n", qPrintable(texto));
        return int(Mensajes::vbOK);
    });
    int guardadas = 0;
    try {
        Despliegue d;
        d.archivo = args[1];
        Module1 m(d);
        m.Conexion.ConnectionString = QStringLiteral("Provider=embebido;Data Source=%1").arg(d.archivo);
        m.Conexion.Open();
        LOGIN::Carga_Parametros(m);
        MDIForm1 principal(m);
        Movimientos entrada(m, principal);
        entrada.Form_Activate();
        for (int n = 1; n <= entradas; ++n) {
            entrada.Text2[2]->setText(QStringLiteral("0012"));
            entrada.Text2[4]->setText(QStringLiteral("10"));
            entrada.Text2[5]->setText(QStringLiteral("9,5"));
            entrada.Text2[10]->setText(QStringLiteral("%1-%2/%3").arg(args[3]).arg(n).arg(entrada.Text2[0]->text().toInt()));
            if (pausa > 0)
                QThread::msleep(QRandomGenerator::global()->bounded(pausa + 1));
            entrada.Incluir_Click();
            ++guardadas;
        }
    } catch (const FalloEjecucion& f) {
        std::printf("guardadas %d\nfallo %ld %s\n", guardadas, f.numero(), qPrintable(f.texto()));
        return 1;
    }
    std::printf("guardadas %d\n", guardadas);
    return 0;
}
