// The command line's answers of the built program on a machine without any
// display: --help and --version print in Spanish and end with status 0,
// without the application object and without touching the operator's books.
#include "prueba.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Respuesta {
    bool termino = false; // ended by itself, not by a signal or the guard
    int estado = -1;
    QString salida;
    QString errores;
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

class PruebaOpciones : public QObject {
    Q_OBJECT
private slots:
    void version_data()
    {
        QTest::addColumn<QString>("opcion");
        QTest::newRow("larga") << QStringLiteral("--version");
        QTest::newRow("corta") << QStringLiteral("-v");
    }

    // One line with the project's version; nothing else happens.
    void version()
    {
        QFETCH(QString, opcion);
        const Respuesta r = responde({opcion});
        QVERIFY2(r.termino, qPrintable(r.errores));
        QCOMPARE(r.estado, 0);
        QCOMPARE(r.errores, QString());
        QVERIFY2(r.salida.endsWith(QLatin1Char('\n')) && r.salida.count(QLatin1Char('\n')) == 1, qPrintable(r.salida));
        QVERIFY2(r.salida.startsWith(QLatin1String("control-pagos ")), qPrintable(r.salida));
        QVERIFY2(r.salida.trimmed().endsWith(QLatin1Char(' ') + QStringLiteral(VERSION_ESPERADA)), qPrintable(r.salida));
        QCOMPARE(r.enCasa, QStringList());
    }

    void ayuda_data()
    {
        QTest::addColumn<QStringList>("argumentos");
        QTest::newRow("larga") << QStringList{QStringLiteral("--help")};
        QTest::newRow("corta") << QStringList{QStringLiteral("-h")};
        // A Qt option before it does not start the program.
        QTest::newRow("tras otra") << QStringList{QStringLiteral("-platform"), QStringLiteral("xcb"), QStringLiteral("--help")};
    }

    // The usage in Spanish: both options, the settings file and the manual page.
    void ayuda()
    {
        QFETCH(QStringList, argumentos);
        const Respuesta r = responde(argumentos);
        QVERIFY2(r.termino, qPrintable(r.errores));
        QCOMPARE(r.estado, 0);
        QCOMPARE(r.errores, QString());
        QVERIFY2(r.salida.startsWith(QLatin1String("Uso: control-pagos")), qPrintable(r.salida));
        for (const char* parte : {"-h, --help", "-v, --version", "muestra la versión", "código de acceso",
                                  "control-pagos.conf", "man control-pagos"})
            QVERIFY2(r.salida.contains(QString::fromUtf8(parte)), parte);
        QCOMPARE(r.enCasa, QStringList());
    }

    // A text that cannot be written (a full disk) is not an answer given.
    void salida_llena()
    {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("sin /dev/full");
        for (const QString& opcion : {QStringLiteral("--help"), QStringLiteral("--version")}) {
            const Respuesta r = responde({opcion}, QStringLiteral("/dev/full"));
            QVERIFY2(r.termino, qPrintable(opcion));
            QCOMPARE(r.estado, 1);
        }
    }
};

REGISTRAR_PRUEBA(PruebaOpciones);
#include "tst_opciones.moc"
