// The README's screenshots: the program on a new demo database, each main
// screen opened by its registered name as its menu entry opens it, and the
// main window drawn into a PNG. A screen not registered in this build is left
// out with a line. Run under a virtual display by scripts/capturas.sh.
//
//   capturas <folder of the pictures> <folder of the scratch database>
#include "arranque.h"
#include "calculos01.h"
#include "consola.h"
#include "embebido.h"
#include "grafico.h"
#include "informe.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "pantalla.h"

#include <QDateEdit>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <cstdio>

namespace {

QString salida;

void espera(int ms = 300) { QTest::qWait(ms); }

// The main window (or another) as the operator sees it, in 256 colours to
// keep the file small; a chart in all its colours, for its faint grid lines.
void guardar(QWidget& ventana, const char* nombre, bool todosLosColores = false)
{
    espera();
    QImage imagen = ventana.grab().toImage();
    if (!todosLosColores)
        imagen = imagen.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
    const QString archivo = QDir(salida).filePath(QLatin1String(nombre) + QStringLiteral(".png"));
    if (imagen.save(archivo))
        std::printf("captura: %s\n", qPrintable(archivo));
    else
        std::printf("FALLO: no se pudo guardar %s\n", qPrintable(archivo));
}

Pantalla* abrir(MDIForm1& principal, const char* nombre)
{
    Pantalla* p = principal.Mostrar(QLatin1String(nombre));
    if (!p)
        std::printf("omitida: la pantalla %s no está registrada en esta compilación\n", nombre);
    else
        p->ventana()->raise();
    espera();
    return p;
}

void cerrar(Pantalla* p)
{
    if (p)
        p->ventana()->close();
    espera(100);
}

// The first paid row of the console's grid, if any.
int filaPagada(Consola* c)
{
    for (int f = 0; f <= c->Celdas.UpperBound(1); ++f) {
        const QString banco = c->Celdas.Value(f, Consola::colCodBanco).texto().trimmed();
        if (!banco.isEmpty() && banco != QLatin1String("7777"))
            return f;
    }
    return -1;
}

} // namespace

int main(int argc, char** argv)
{
    Aplicacion app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "uso: capturas <carpeta de las capturas> <carpeta de trabajo>\n");
        return 2;
    }
    // The program's icon from the sources, installed package or not.
    app.setWindowIcon(QIcon(QStringLiteral(ICONO)));
    salida = QString::fromLocal8Bit(argv[1]);
    const QString trabajo = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(salida);

    Despliegue d;
    d.archivo = QDir(trabajo).filePath(QStringLiteral("ramil.db"));
    d.carpetaRecibos = QDir(trabajo).filePath(QStringLiteral("RECIBOS"));
    // Always a new demo database, made here: the start-up makes the demo
    // only at the default place and asks before creating a file it is named.
    QFile::remove(d.archivo);
    ServidorEmbebido::crearBase(d.archivo, true);
    // Boxes are answered at once and told on the terminal, never drawn.
    Mensajes::Reemplazar([](const QString& texto, int, const QString&) {
        std::printf("mensaje: %s\n", qPrintable(QString(texto).replace(QLatin1Char('\n'), QLatin1Char(' '))));
        return Mensajes::vbOK;
    });

    Module1 m(d);
    m.reloj = [t = QDateTime::currentDateTime()]() mutable { return t = t.addSecs(1); }; // no waits
    MDIForm1 principal(m);
    Registra_Pantallas(principal);
    principal.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    principal.show();
    espera();
    Arrancar(principal, d, QDate::currentDate());
    guardar(principal, "01-login");

    auto* login = static_cast<LOGIN*>(principal.Abierta(QStringLiteral("LOGIN")));
    login->Text1->setText(m.Clave);
    QTest::keyClick(login->Text1, Qt::Key_Return);
    espera();

    Pantalla* entrada = abrir(principal, "Movimientos");
    guardar(principal, "02-entrada");
    cerrar(entrada);

    // The console over the last month of the demo, with its footers.
    if (auto* consola = static_cast<Consola*>(abrir(principal, "Form2"))) {
        consola->Fecha1->setDate(QDate::currentDate().addDays(-30));
        consola->Fecha2->setDate(QDate::currentDate());
        consola->SELECCIONA->click();
        guardar(principal, "03-consola");
        const int fila = filaPagada(consola);
        if (fila >= 0) {
            consola->Marcar(fila);
            consola->Text6->setText(QStringLiteral("1"));
            consola->Text6_Enter();
            consola->Text6_LostFocus();
            consola->RECIBO_PDF->click();
            espera();
            if (QFile::exists(consola->recibo.Recibo_Origen)) {
                QFile::remove(QDir(trabajo).filePath(QStringLiteral("recibo.pdf")));
                QFile::copy(consola->recibo.Recibo_Origen, QDir(trabajo).filePath(QStringLiteral("recibo.pdf")));
                std::printf("recibo: %s\n", qPrintable(QDir(trabajo).filePath(QStringLiteral("recibo.pdf"))));
            }
        } else {
            std::printf("omitido: el recibo (no hay filas pagadas en la consola)\n");
        }
        cerrar(consola);
    }

    if (Pantalla* p = abrir(principal, "NEW_DOLAR")) {
        guardar(principal, "05-tasas");
        cerrar(p);
    }
    // The daily statistics of this month, their chart, and their report
    // printed to a PDF file whose first page the script turns into a picture.
    if (auto* p = static_cast<CALCULOS01*>(abrir(principal, "CALCULOS01"))) {
        guardar(principal, "06-estadisticas");
        Grafico* g = Grafico::Mostrar(*p);
        g->resize(1200, 680);
        guardar(*g, "07-grafico", true);
        g->close();
        QPrinter impresora(QPrinter::HighResolution);
        impresora.setOutputFormat(QPrinter::PdfFormat);
        impresora.setOutputFileName(QDir(trabajo).filePath(QStringLiteral("informe.pdf")));
        impresora.setPageSize(QPageSize(QPageSize::A4));
        impresora.setPageMargins(QMarginsF(15, 15, 15, 12), QPageLayout::Millimeter);
        if (Informe::Imprimir(*Informe::Documento(*p, Informe::Titulo(m.despliegue)), impresora) > 0)
            std::printf("informe: %s\n", qPrintable(impresora.outputFileName()));
        cerrar(p);
    }
    Mensajes::Reemplazar({});
    return 0;
}
