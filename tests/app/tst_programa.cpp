// The program as a whole: the built program's answers to --help and
// --version on a machine without a display, its top level that turns a
// failure into the run-time report and ends, Qt's dialogs in Spanish, Enter
// pressing each button of every screen it registers once, and text typed
// into the real screens to change what they send refused by the statement
// guard, nothing written.
#include "arranque.h"
#include "fallo_esperado.h"
#include "escribir.h"
#include "form1.h"
#include "form2.h"
#include "mensajes.h"
#include "mesa.h"
#include "movimientos.h"
#include "prueba.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Respuesta {
    bool termino = false; // ended by itself, not by a signal or the guard
    int estado = -1;
    QString salida, errores;
    QStringList enCasa; // what the run left in its home
};

// The program started as on a terminal of a machine without a display, on a
// home of its own.
Respuesta responde(const QStringList& argumentos, const QString& salida = {})
{
    QTemporaryDir casa;
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        entorno.remove(QString::fromLatin1(variable));
    entorno.insert(QStringLiteral("HOME"), casa.path());
    QProcess p;
    p.setProcessEnvironment(entorno);
    if (!salida.isEmpty())
        p.setStandardOutputFile(salida);
    p.start(QStringLiteral(PROGRAMA), argumentos);
    Respuesta r;
    r.termino = p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit;
    if (!r.termino)
        p.kill();
    p.waitForFinished();
    r.estado = p.exitCode();
    r.salida = QString::fromUtf8(p.readAllStandardOutput());
    r.errores = QString::fromUtf8(p.readAllStandardError());
    r.enCasa = QDir(casa.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return r;
}

} // namespace

class PruebaPrograma : public QObject {
    Q_OBJECT
private slots:
    // The version: one line, the whole answer. The usage: both options, the
    // settings file and the manual page. Nothing else happens.
    void opciones_data()
    {
        QTest::addColumn<QStringList>("argumentos");
        QTest::addColumn<QString>("inicio");
        QTest::addColumn<QStringList>("partes");
        const QString version = QStringLiteral("control-pagos (Control de Pagos) " VERSION_ESPERADA "\n");
        const QStringList ayuda {"-h, --help",       "-v, --version",      "muestra la versión",
                                 "código de acceso", "control-pagos.conf", "man control-pagos"};
        QTest::newRow("--version") << QStringList {"--version"} << version << QStringList();
        QTest::newRow("-v") << QStringList {"-v"} << version << QStringList();
        QTest::newRow("--help") << QStringList {"--help"} << "Uso: control-pagos" << ayuda;
        QTest::newRow("-h") << QStringList {"-h"} << "Uso: control-pagos" << ayuda;
        // A Qt option before it does not start the program.
        QTest::newRow("tras otra") << QStringList {"-platform", "xcb", "--help"} << "Uso: control-pagos" << ayuda;
    }
    void opciones()
    {
        QFETCH(QStringList, argumentos);
        QFETCH(QString, inicio);
        QFETCH(QStringList, partes);
        const Respuesta r = responde(argumentos);
        QVERIFY2(r.termino, qPrintable(r.errores));
        QCOMPARE(r.estado, 0);
        QCOMPARE(r.errores, QString());
        QVERIFY2(partes.isEmpty() ? r.salida == inicio : r.salida.startsWith(inicio), qPrintable(r.salida));
        for (const QString& parte : partes)
            QVERIFY2(r.salida.contains(parte), qPrintable(parte));
        QCOMPARE(r.enCasa, QStringList());
    }

    // A text that cannot be written (a full disk) is not an answer given.
    void salida_llena()
    {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("sin /dev/full");
        for (const QString& opcion : {QStringLiteral("--help"), QStringLiteral("--version")}) {
            const Respuesta r = responde({opcion}, QStringLiteral("/dev/full"));
            QVERIFY2(r.termino && r.estado == 1, qPrintable(opcion));
        }
    }

    // A failure at the top shows the run-time report, once, and ends with status 1.
    void unFalloTerminaElProgramaConSuReporte()
    {
        QStringList vistos;
        Mensajes::Reemplazar([&](const QString& texto, int estilo, const QString&) {
            vistos << QStringLiteral("%1|%2").arg(estilo).arg(texto);
            return Mensajes::vbOK;
        });
        QTimer::singleShot(0, [] { Atiende_Fallo([]() -> bool { throw FalloEjecucion::tiposNoCoinciden(); }); });
        const int estado = QCoreApplication::exec();
        Mensajes::Reemplazar({});
        QCOMPARE(estado, 1);
        QCOMPARE(vistos.size(), 1);
        QVERIFY2(vistos[0].startsWith(QStringLiteral("16|")) && vistos[0].contains(QStringLiteral("'13'")) &&
                     vistos[0].contains(QStringLiteral("No coinciden los tipos")),
                 qPrintable(vistos[0]));
    }

    // Qt's own dialogs speak Spanish once the program has loaded its
    // translations: the standard buttons, and the photo's file dialog.
    void dialogosDeQtEnCastellano()
    {
        QVERIFY(Carga_Traducciones());
        QMessageBox caja;
        caja.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        const auto texto = [](QAbstractButton* b) { return b->text().remove(QLatin1Char('&')); };
        QCOMPARE((QStringList {texto(caja.button(QMessageBox::Yes)), texto(caja.button(QMessageBox::No)),
                               texto(caja.button(QMessageBox::Cancel))}),
                 (QStringList {"Sí", "No", "Cancelar"}));
        QFileDialog archivo;
        archivo.setOption(QFileDialog::DontUseNativeDialog);
        archivo.setAcceptMode(QFileDialog::AcceptOpen);
        auto* botones = archivo.findChild<QDialogButtonBox*>();
        QVERIFY(botones);
        QCOMPARE(texto(botones->button(QDialogButtonBox::Open)), QStringLiteral("Abrir"));
    }

    // Enter on a focused button of any screen presses it once, whether the
    // button takes the key itself (auto-default) or through the program's
    // filter, and whichever of the two Enter keys.
    void enterPulsaCadaBotonUnaVez()
    {
        SesionDePrueba s;
        for (const char* nombre :
             {"Movimientos", "BANCOS", "BANCOS_ZELLE", "Clientes", "Proveedores", "CONCEPTOS", "Form_SERVICIOS", "Form2",
              "Form2_Pago", "F5_USDT", "NEW_DOLAR", "SERVICIOS_USDT", "Dolar", "DOLAR_NEW", "Form1", "CALCULOS01",
              "Resumen_mensual", "CALCULOS01_USDT", "RESUMEN_MENSUAL_USDT"}) {
            auto* p = s.abrir<Pantalla>(QString::fromLatin1(nombre));
            QVERIFY2(p, nombre);
            int botones = 0;
            for (QPushButton* b : p->findChildren<QPushButton*>()) {
                if (!b->isEnabled() || !b->isVisibleTo(p))
                    continue;
                ++botones;
                // Only the count of presses matters here, not what they do.
                QObject::disconnect(b, &QAbstractButton::clicked, nullptr, nullptr);
                int pulsado = 0;
                connect(b, &QAbstractButton::clicked, [&] { ++pulsado; });
                b->setFocus();
                QTest::keyClick(b, Qt::Key_Return);
                QTest::keyClick(b, Qt::Key_Enter);
                QVERIFY2(pulsado == 2,
                         qPrintable(
                             QStringLiteral("%1.%2 pulsado %3 veces").arg(QLatin1String(nombre), b->objectName()).arg(pulsado)));
            }
            QVERIFY2(botones > 0, nombre);
            p->Unload();
            QCoreApplication::processEvents();
        }
        QVERIFY(s.mensajes.isEmpty());
    }

    // The entry screen's note: a statement closing the quote, or a letter the
    // database cannot hold. The report, and nothing written.
    void notaDeLaEntrada()
    {
        for (const auto& [nota, fallo] : {std::pair {"x','1','1',0,'','',0,0,'0') DELETE MOVIMIENTOS WHERE 1=1 OR obs IN ('", ""},
                                          std::pair {"pagado a Ayşe", "no puede guardar"}}) {
            SesionDePrueba s;
            auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
            const QString todas = QStringLiteral("select count(*) || '/' || total(recibido) from MOVIMIENTOS");
            const QString antes = s.base.valor(todas);
            p->Text2[2]->setText(QStringLiteral("0012"));
            p->Text2[4]->setText(QStringLiteral("10"));
            p->Text2[5]->setText(QStringLiteral("9,5"));
            p->Text2[10]->setText(QString::fromUtf8(nota));
            ESPERAR_FALLO(p->Incluir_Click(), kServidor, fallo);
            QCOMPARE(s.base.valor(todas), antes);
        }
    }

    // A whole statement typed into the "Nota" or the "Referencia" of a row; one
    // quote in each, which turns the statement's own text between them into
    // values, the first of them the provider's code.
    void notaYReferenciaDeLaConsola()
    {
        const char* const filas = R"(
            INSERT INTO clientes VALUES (12, 'MARIA PEREZ', '');
            INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
                VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364);
            INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
                VALUES (1, 'DOLAR', 400, 0, 0, 0), (2, 'BASE', 410, 0, 0, 0);
            INSERT INTO parametros VALUES ('1234', '', '', 400);
            INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, tipo_servicio, obs, g1, g2, operadora)
                VALUES ('20250310', 1, 12, 100, 94.3, 1, 'uno', 94.3, 94.3, '1'), ('20250310', 2, 12, 20, 18.6, 1, 'dos', 18.6, 18.6, '1');
        )";
        const QString todas = QStringLiteral(
            "select group_concat(SECUENCIA || obs || REFERENCIA || pago || C_BANCO, '|') from MOVIMIENTOS");
        const QString entera = QStringLiteral("x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x");
        const struct {
            QString nota, referencia;
            const char* fallo;
        } casos[] = {
            {entera, QString(), ""},
            {QString(), entera, ""},
            {QStringLiteral("x' , C_PROVEEDOR ="), QStringLiteral("' y"),
             "Conversion failed when converting the varchar value ', C_PROVEEDOR ="},
        };
        for (const auto& caso : casos) {
            Mesa<Form2> c(QString::fromUtf8(filas), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10));
            const QString antes = c.s.base.valor(todas);
            QCOMPARE(c.p->Celdas.UpperBound(1), 1);
            if (!caso.nota.isEmpty())
                c.escribir(0, Form2::colNota, caso.nota);
            if (!caso.referencia.isEmpty())
                c.escribir(0, Form2::colReferencia, caso.referencia);
            QCOMPARE(c.celda(0, Form2::colMarca), QStringLiteral("1"));
            ESPERAR_FALLO(c.p->ACTUALIZAR->click(), kServidor, caso.fallo);
            QCOMPARE(c.s.base.valor(todas), antes);
        }
    }

    // The batch entry's lines: a client code entering another statement, and
    // one quote in each of two lines.
    void lineasDelLote()
    {
        const QString lineas[][2] = {
            {QStringLiteral("12','100','94.3','0','0','','','0','1',2,'1',0,'',0,0,'',100,'','94.3','94.3',0,'','',0,0,'0')"
                            " INSERT INTO MOVIMIENTOS VALUES ('20200101','1','12"),
             QStringLiteral("7")},
            {QStringLiteral("12'"), QStringLiteral("'7")},
        };
        for (const auto& linea : lineas) {
            SesionDePrueba s(false);
            s.base.sql(QStringLiteral("INSERT INTO servicios (C_SERVIcio, D_SERVIcio, letra) VALUES (1, 'TRUMIN', 'T');"
                                      "INSERT INTO clientes VALUES (12, 'ANA ROJAS', ''), (7, 'LUIS MORA', '')"));
            s.m->Carga_Tablas();
            auto* p = s.abrir<Form1>(QStringLiteral("Form1"));
            for (int fila : {0, 1}) {
                escribirEnCelda(*p->GRID, fila, Form1::colCliente, linea[fila]);
                escribirEnCelda(*p->GRID, fila, Form1::colEnviado, QStringLiteral("100"));
                escribirEnCelda(*p->GRID, fila, Form1::colRecibido, QStringLiteral("94,3"));
                escribirEnCelda(*p->GRID, fila, Form1::colLetra, QStringLiteral("t"));
            }
            QCOMPARE(p->Celdas.Value(0, Form1::colCliente).texto(), linea[0]);
            ESPERAR_FALLO(p->INCLUIR->click(), kServidor, "");
            QCOMPARE(s.base.valor("select count(*) from MOVIMIENTOS"), QStringLiteral("0"));
        }
    }
};

REGISTRAR_PRUEBA(PruebaPrograma);
#include "tst_programa.moc"
