// Copy and export of a grid: the clipboard text of a selection, the workbook
// and the text file read back, and the menu's flow with the dialog answered.
#include "celdas.h"
#include "exportar.h"
#include "mensajes.h"
#include "prueba.h"
#include "rejilla.h"

#include <QAction>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QMenu>
#include <QProcess>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace {

const FormatoNumero kMonto(QStringLiteral("###,##0.00"));
const FormatoNumero kMiles(QStringLiteral("###,###"));

// A grid of every kind of cell: a code, a text with the separators, an
// amount under a two-line caption, a number as text, a date, a key column
// too narrow to read, a hidden column, an amount that shows nothing for zero,
// a number as text in a left column, a plain number, a code in a right
// column. "Tasa" is moved to the second place; footers under three columns.
struct Fixture {
    Rejilla g {QStringLiteral("GRID")};
    Celdas c;
    Fixture()
    {
        const std::vector<std::tuple<const char*, int, Alineacion>> columnas {{"Código", 700, Alineacion::Izquierda},
                                                                              {"Cliente", 2000, Alineacion::Izquierda},
                                                                              {"Monto\r\nEnviado", 1300, Alineacion::Derecha},
                                                                              {"Tasa", 900, Alineacion::Derecha},
                                                                              {"Fecha", 1100, Alineacion::Centro},
                                                                              {"Clave", 30, Alineacion::Izquierda},
                                                                              {"Oculta", 900, Alineacion::Izquierda},
                                                                              {"Cero", 800, Alineacion::Derecha},
                                                                              {"Nota", 900, Alineacion::Izquierda},
                                                                              {"Número", 900, Alineacion::General},
                                                                              {"Código2", 900, Alineacion::Derecha}};
        for (int k = 0; k < int(columnas.size()); ++k)
            g.Columns(k)
                .setCaption(QString::fromUtf8(std::get<0>(columnas[size_t(k)])))
                .setWidth(std::get<1>(columnas[size_t(k)]))
                .setAlignment(std::get<2>(columnas[size_t(k)]));
        g.Columns(6).setVisible(false);
        g.Columns(3).setOrder(1);
        c.ReDim(0, 1, 0, 10);
        const std::vector<std::vector<Celda>> filas {{"0007", QStringLiteral("Ana; \"la\" Pérez"), Celda::Cifra(kMonto, 1234.5),
                                                      "1.234,5", "24/11/2026", "K1", "X", Celda::Cifra(kMiles, 0), "-12,5", 94.3,
                                                      "0007"},
                                                     {"0012", "Luis\tMora", Celda::Cifra(kMonto, -12.25), "36,25", "01/02/2026",
                                                      "K2", "Y", Celda::Cifra(kMiles, 1500), "00,5", 2, "12"}};
        for (int f = 0; f < 2; ++f)
            for (int k = 0; k <= 10; ++k)
                c.Value(f, k) = filas[size_t(f)][size_t(k)];
        g.setColumnFooters(true);
        g.Array(c);
        g.Columns(0).setFooterText(QStringLiteral("Total"));
        g.Columns(2).setFooterText(QStringLiteral("1.222,25"));
        g.Columns(7).setFooterText(QStringLiteral("1.500"));
        g.setExportacion([] { return QStringLiteral("prueba"); });
    }
    // Blocks of cells: x the column, y the row.
    void elegir(const QList<QRect>& bloques)
    {
        QItemSelection s;
        for (const QRect& b : bloques)
            s.select(g.modelo()->index(b.top(), b.left()), g.modelo()->index(b.bottom(), b.right()));
        g.vista()->selectionModel()->select(s, QItemSelectionModel::ClearAndSelect);
    }
};

QByteArray descomprimido(const QString& libro, const QString& parte)
{
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), libro, parte});
    p.waitForFinished();
    return p.readAllStandardOutput();
}

// The cells of a sheet, "B2" -> "n 1234.5 #,##0.0 negrita" (n a number, s a
// text, inline or shared), with the format and the weight of its style.
QMap<QString, QString> celdasDelLibro(const QString& libro, int hoja)
{
    static const QMap<QString, QString> integrados {{"0", ""}, {"1", "0"}, {"2", "0.00"}, {"3", "#,##0"}, {"4", "#,##0.00"}};
    QMap<QString, QString> formatos = integrados;
    QStringList estilos, compartidas;
    QList<bool> negritas;
    QXmlStreamReader x(descomprimido(libro, QStringLiteral("xl/styles.xml")));
    bool enXfs = false;
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement) {
            const auto a = x.attributes();
            if (x.name() == u"numFmt")
                formatos[a.value("numFmtId").toString()] = a.value("formatCode").toString();
            else if (x.name() == u"font")
                negritas << false;
            else if (x.name() == u"b")
                negritas.last() = true;
            else if (x.name() == u"cellXfs")
                enXfs = true;
            else if (x.name() == u"xf" && enXfs)
                estilos << (formatos.value(a.value("numFmtId").toString()) +
                            (negritas.value(a.value("fontId").toInt()) ? QStringLiteral(" negrita") : QString()));
        }
    QXmlStreamReader s(descomprimido(libro, QStringLiteral("xl/sharedStrings.xml")));
    while (!s.atEnd())
        if (s.readNext() == QXmlStreamReader::StartElement && s.name() == u"t")
            compartidas << s.readElementText();
    QMap<QString, QString> r;
    QXmlStreamReader h(descomprimido(libro, QStringLiteral("xl/worksheets/sheet%1.xml").arg(hoja)));
    QString ref, tipo, estilo;
    while (!h.atEnd()) {
        if (h.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (h.name() == u"c") {
            ref = h.attributes().value("r").toString();
            tipo = h.attributes().value("t").toString();
            estilo = estilos.value(h.attributes().value("s").toInt()).trimmed();
        } else if (h.name() == u"v" || h.name() == u"t") {
            QString v = h.readElementText();
            const bool texto = tipo == u"s" || tipo == u"inlineStr";
            if (tipo == u"s")
                v = compartidas.value(v.toInt());
            r[ref] = (QStringList {texto ? QStringLiteral("s") : QStringLiteral("n"), v, estilo}).join(' ').trimmed();
        }
    }
    return r;
}

QString hojasDelLibro(const QString& libro)
{
    QStringList r;
    QXmlStreamReader x(descomprimido(libro, QStringLiteral("xl/workbook.xml")));
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"sheet")
            r << x.attributes().value("name").toString();
    return r.join('|');
}

QAction* accion(Rejilla& g, const char* nombre)
{
    for (QAction* a : g.menuContextual()->actions())
        if (a->objectName() == QLatin1String(nombre))
            return a;
    return nullptr;
}

} // namespace

class PruebaExportar : public QObject {
    Q_OBJECT

    QTemporaryDir ajustes_;

private slots:
    void initTestCase()
    {
        // The remembered folder goes to a settings file of the test's own.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ajustes_.path());
    }
    void cleanup()
    {
        Exportar::Reemplazar({});
        Mensajes::Reemplazar({});
    }

    void textoDeLaSeleccion_data()
    {
        QTest::addColumn<QList<QRect>>("bloques");
        QTest::addColumn<QString>("esperado");
        // Shown as on screen, "Tasa" second; the narrow key and the hidden
        // column left out; a tab inside a cell becomes a blank.
        QTest::newRow("todo") << QList<QRect> {QRect(QPoint(0, 0), QPoint(10, 1))}
                              << QStringLiteral("Código\tTasa\tCliente\tMonto Enviado\tFecha\tCero\tNota\tNúmero\tCódigo2\n"
                                                "0007\t1.234,5\tAna; \"la\" Pérez\t1.234,50\t24/11/2026\t\t-12,5\t94,3\t0007\n"
                                                "0012\t36,25\tLuis Mora\t-12,25\t01/02/2026\t1.500\t00,5\t2\t12\n");
        // Two blocks: the columns and rows of both, the cells of neither empty.
        QTest::newRow("dos bloques") << QList<QRect> {QRect(0, 0, 1, 1), QRect(2, 1, 1, 1)}
                                     << QStringLiteral("Código\tMonto Enviado\n0007\t\n\t-12,25\n");
    }
    void textoDeLaSeleccion()
    {
        QFETCH(QList<QRect>, bloques);
        QFETCH(QString, esperado);
        Fixture f;
        f.elegir(bloques);
        QCOMPARE(f.g.textoSeleccion(), esperado);
    }

    void nombresDeHojas_data()
    {
        QTest::addColumn<QStringList>("nombres");
        QTest::addColumn<QStringList>("esperados");
        QTest::newRow("caracteres vedados y repetidos")
            << QStringList {"Consulta: 11/2026 [a]", "consulta- 11-2026 -a-", "¿Qué*?\\"}
            << QStringList {"Consulta- 11-2026 -a-", "consulta- 11-2026 -a- (2)", "¿Qué---"};
        QTest::newRow("largos, vacíos, apóstrofos")
            << QStringList {"Un nombre de hoja mucho más largo que treinta y uno", "", "'Tasas'",
                            "Un nombre de hoja mucho más largo"}
            << QStringList {"Un nombre de hoja mucho más lar", "Hoja", "Tasas", "Un nombre de hoja mucho más (2)"};
    }
    void nombresDeHojas()
    {
        QFETCH(QStringList, nombres);
        QFETCH(QStringList, esperados);
        const std::vector<QString> r = Exportar::Nombres_De_Hojas({nombres.begin(), nombres.end()});
        QCOMPARE(QStringList(r.begin(), r.end()), esperados);
    }

    void libro_data()
    {
        QTest::addColumn<QString>("celda");
        QTest::addColumn<QString>("esperado");
        const int serial = int(QDate(1899, 12, 30).daysTo(QDate(2026, 11, 24)));
        QTest::newRow("título en negrita") << "A1"
                                           << "s Código negrita";
        QTest::newRow("título de dos líneas") << "D1"
                                              << "s Monto Enviado negrita";
        QTest::newRow("código") << "A2"
                                << "s 0007";
        QTest::newRow("número de texto agrupado") << "B2"
                                                  << "n 1234.5 #,##0.0";
        QTest::newRow("número de texto") << "B3"
                                         << "n 36.25 0.00";
        QTest::newRow("texto") << "C2"
                               << "s Ana; \"la\" Pérez";
        QTest::newRow("importe en su patrón") << "D3"
                                              << "n -12.25 ###,##0.00";
        QTest::newRow("fecha") << "E2" << QStringLiteral("n %1 dd/mm/yyyy").arg(serial);
        QTest::newRow("cero sin nada que mostrar") << "F2"
                                                   << "n 0 ###,###";
        QTest::newRow("número en columna a la izquierda") << "G2"
                                                          << "s -12,5";
        QTest::newRow("número de la celda") << "H2"
                                            << "n 94.3";
        QTest::newRow("código a la derecha") << "I2"
                                             << "s 0007";
        QTest::newRow("entero a la derecha") << "I3"
                                             << "n 12 0";
        QTest::newRow("pie de texto") << "A4"
                                      << "s Total negrita";
        QTest::newRow("pie de importe") << "D4"
                                        << "n 1222.25 #,##0.00 negrita";
        QTest::newRow("pie de miles") << "F4"
                                      << "n 1500 #,##0 negrita";
        QTest::newRow("nada más allá") << "J2"
                                       << "";
    }
    void libro()
    {
        QFETCH(QString, celda);
        QFETCH(QString, esperado);
        Fixture f, otra;
        QTemporaryDir dir;
        const QString archivo = dir.filePath(QStringLiteral("libro.xlsx"));
        QCOMPARE(Exportar::Libro({{QStringLiteral("Consulta: 11/2026"), &f.g}, {QStringLiteral("consulta- 11-2026"), &otra.g}},
                                 archivo),
                 QString());
        QCOMPARE(hojasDelLibro(archivo), QStringLiteral("Consulta- 11-2026|consulta- 11-2026 (2)"));
        for (int hoja : {1, 2})
            QCOMPARE(celdasDelLibro(archivo, hoja).value(celda), esperado);
    }

    void textoSeparado()
    {
        Fixture f;
        QTemporaryDir dir;
        const QString archivo = dir.filePath(QStringLiteral("consulta.csv"));
        QCOMPARE(Exportar::Texto_Separado(f.g, archivo), QString());
        QFile leido(archivo);
        QVERIFY(leido.open(QIODevice::ReadOnly));
        QCOMPARE(leido.read(3), QByteArray("\xEF\xBB\xBF"));
        QCOMPARE(QString::fromUtf8(leido.readAll()),
                 QStringLiteral("Código;Tasa;Cliente;Monto Enviado;Fecha;Cero;Nota;Número;Código2\r\n"
                                "0007;1234,5;\"Ana; \"\"la\"\" Pérez\";1234,50;24/11/2026;;-12,5;94,3;0007\r\n"
                                "0012;36,25;Luis\tMora;-12,25;01/02/2026;1500;00,5;2;12\r\n"
                                "Total;;;1222,25;;1500;;;\r\n"));
    }

    // The menu's export, the dialog answered with a path under a folder of
    // the test: the file written or the failure told, the folder remembered
    // only after a file was written.
    void exportarDesdeElMenu_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QByteArray>("comienzo");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("libro") << "a.xlsx" << QByteArray("PK") << QString();
        QTest::newRow("texto") << "a.CSV"
                               << QByteArray("\xEF\xBB\xBF"
                                             "Código;")
                               << QString();
        QTest::newRow("carpeta inexistente") << "falta/a.xlsx" << QByteArray()
                                             << QStringLiteral("No se pudo guardar el archivo \"a.xlsx\": la carpeta no existe.");
        QTest::newRow("libro en un disco lleno")
            << "lleno.xlsx" << QByteArray()
            << QStringLiteral("No se pudo guardar el archivo \"lleno.xlsx\": el disco está lleno.");
        QTest::newRow("texto en un disco lleno")
            << "lleno.csv" << QByteArray() << QStringLiteral("No se pudo guardar el archivo \"lleno.csv\": el disco está lleno.");
    }
    void exportarDesdeElMenu()
    {
        QFETCH(QString, nombre);
        QFETCH(QByteArray, comienzo);
        QFETCH(QString, mensaje);
        Fixture f;
        QTemporaryDir dir;
        // A disk that is full: what is written to /dev/full fails for want of room.
        for (const char* lleno : {"lleno.xlsx", "lleno.csv"})
            QVERIFY(QFile::link(QStringLiteral("/dev/full"), dir.filePath(QLatin1String(lleno))));
        const QString antes = QStringLiteral("/carpeta/de/antes");
        QSettings(QSettings::NativeFormat, QSettings::UserScope, "ControlDePagos", "control-pagos")
            .setValue("exportar/carpeta", antes);
        QStringList propuestos, mensajes;
        Exportar::Reemplazar([&](QWidget*, const QString& propuesto) {
            propuestos << propuesto;
            return dir.filePath(nombre);
        });
        Mensajes::Reemplazar([&](const QString& texto, int, const QString&) {
            mensajes << texto;
            return Mensajes::vbOK;
        });

        QAction* exportar = accion(f.g, "exportar");
        QVERIFY(exportar);
        exportar->trigger();
        QCOMPARE(mensajes, mensaje.isEmpty() ? QStringList() : QStringList {mensaje});
        QFile escrito(dir.filePath(nombre));
        if (!comienzo.isEmpty()) {
            QVERIFY(escrito.open(QIODevice::ReadOnly));
            QCOMPARE(escrito.read(comienzo.size()), comienzo);
        }
        // A folder that no longer exists is no proposal: the home folder is.
        exportar->trigger();
        QCOMPARE(propuestos.value(0), QDir::home().filePath(QStringLiteral("prueba.xlsx")));
        QCOMPARE(propuestos.value(1), mensaje.isEmpty() ? dir.filePath(QStringLiteral("prueba.xlsx"))
                                                        : QDir::home().filePath(QStringLiteral("prueba.xlsx")));
    }

    // The keys on the cells: Ctrl+C copies the selection, Ctrl+E exports;
    // the menu holds both.
    void teclasYMenu()
    {
        Fixture f;
        f.g.resize(600, 200);
        f.g.show();
        f.g.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.g));
        f.g.vista()->setFocus();
        f.elegir({QRect(0, 0, 3, 1)});
        QApplication::clipboard()->clear();
        QTest::keyClick(f.g.vista(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(),
                 QStringLiteral("Código\tCliente\tMonto Enviado\n0007\tAna; \"la\" Pérez\t1.234,50\n"));

        int dialogos = 0;
        Exportar::Reemplazar([&](QWidget*, const QString&) {
            ++dialogos;
            return QString();
        });
        QTest::keyClick(f.g.vista(), Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(dialogos, 1);

        QStringList textos;
        for (const QAction* a : f.g.menuContextual()->actions())
            textos << a->text();
        QCOMPARE(textos, (QStringList {"Copiar", "Exportar a hoja de cálculo..."}));

        // The menu from the keyboard, its first entry chosen with the arrow
        // and Enter; a second request while it is open opens no second one.
        for (const QKeyCombination tecla : {QKeyCombination(Qt::Key_Menu), Qt::SHIFT | Qt::Key_F10}) {
            QApplication::clipboard()->clear();
            QTest::keyClick(f.g.vista(), tecla.key(), tecla.keyboardModifiers());
            QTRY_VERIFY(f.g.menuContextual()->isVisible());
            const QPoint donde = f.g.menuContextual()->pos();
            QTest::keyClick(f.g.vista(), tecla.key(), tecla.keyboardModifiers());
            QCOMPARE(f.g.menuContextual()->pos(), donde);
            QTest::keyClick(f.g.menuContextual(), Qt::Key_Down);
            QTest::keyClick(f.g.menuContextual(), Qt::Key_Return);
            QTRY_VERIFY(!f.g.menuContextual()->isVisible());
            QVERIFY(QApplication::clipboard()->text().startsWith(QStringLiteral("Código\tCliente")));
        }
    }
};

REGISTRAR_PRUEBA(PruebaExportar);
#include "tst_exportar.moc"
