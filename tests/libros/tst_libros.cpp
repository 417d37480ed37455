// The books around the program: the start-up that makes, checks and upgrades
// the database file, a file moved under the running program, the rights of
// what holds the books, the day's copy at the start, and the end of the
// program on a logout.
#include "arranque.h"
#include "base_temporal.h"
#include "copias.h"
#include "embebido.h"
#include "fallo.h"
#include "libros.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "prueba.h"
#include "revision.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QDate kHoy(2026, 11, 24);

// The start-up run on a deployment, every box it showed kept and answered.
struct Inicio {
    QStringList avisos;
    bool sigue = false;
    Inicio(const Despliegue& d, int respuesta = Mensajes::vbOK)
    {
        Mensajes::Reemplazar([&](const QString& texto, int, const QString&) {
            avisos << texto;
            return respuesta;
        });
        sigue = Prepara_Base(d, kHoy);
        Mensajes::Reemplazar({});
    }
};

// The program started on a deployment on kHoy: LOGIN, then the day's copy.
struct Arranque {
    explicit Arranque(const Despliegue& d) : m(d), principal(m)
    {
        Mensajes::Reemplazar([this](const QString& texto, int estilo, const QString&) {
            avisos << texto;
            estilos << estilo;
            return Mensajes::vbOK;
        });
        principal.show();
        Arrancar(principal, d, kHoy);
        Mensajes::Reemplazar({});
    }
    Module1 m;
    MDIForm1 principal;
    QStringList avisos;
    QList<int> estilos;
};

Despliegue enCarpeta(const QString& archivo)
{
    Despliegue d;
    d.archivo = archivo;
    return d;
}

// The rights of each path, as "600 700 ...".
QString modos(const QStringList& rutas)
{
    QStringList r;
    for (const QString& ruta : rutas) {
        struct stat st {};
        ::stat(QFile::encodeName(ruta).constData(), &st);
        r << QString::number(st.st_mode & 0777, 8);
    }
    return r.join(QLatin1Char(' '));
}

QByteArray huella(const QString& archivo)
{
    QFile f(archivo);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// The only box shown names every part.
void unAviso(const QStringList& avisos, const QStringList& partes)
{
    QCOMPARE(avisos.size(), 1);
    for (const QString& parte : partes)
        QVERIFY2(avisos[0].contains(parte), qPrintable(avisos[0]));
}

// One entry as the entry screen sends it.
void entrada(ServidorEmbebido& servidor, const char* fecha, int secuencia)
{
    servidor.ejecutar(QStringLiteral("INSERT INTO MOVIMIENTOS VALUES ('%1', %2, 12, 10, 9.5, 0, 0, '', '', 0, '1', 2, 1, 0, "
                                     "'', 0, 0, '', 100, 'nota', 9.5, 9.5, 0, '', '', 0, 0, '')")
                          .arg(fecha)
                          .arg(secuencia));
}

// Every object of a database as the engine keeps it, and every row of its
// tables, as one text each, so that two files can be compared whole.
QString esquema(const QString& archivo)
{
    return BaseTemporal::valorDe(archivo, "SELECT group_concat(type || ' ' || name || ' ' || tbl_name || ' ' || sql, "
                                          "char(10)) FROM (SELECT * FROM sqlite_schema ORDER BY type, name)");
}

QString filasDe(const QString& archivo, const QString& tabla)
{
    const QString fila = BaseTemporal::valorDe(archivo, QStringLiteral("SELECT group_concat('quote(' || name || ')', "
                                                                       "' || '','' || ') FROM pragma_table_info('%1')")
                                                            .arg(tabla));
    return BaseTemporal::valorDe(archivo, QStringLiteral("SELECT count(*) || ':' || group_concat(fila, '|') FROM "
                                                         "(SELECT %1 AS fila FROM %2 ORDER BY 1)")
                                              .arg(fila, tabla));
}

// An old database: the schema of an earlier version of the program, with the
// rows of a new demo database in the columns that version had.
void baseAntigua(const QString& archivo, const QString& fijo, const QString& demo)
{
    QFile f(fijo);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QFile(archivo).remove();
    BaseTemporal::ejecutarEn(archivo, QString::fromUtf8(f.readAll()));
    QStringList copias;
    for (const QString& tabla : BaseTemporal::valorDe(archivo, "SELECT group_concat(name) FROM sqlite_schema "
                                                               "WHERE type = 'table'")
                                    .split(QLatin1Char(',')))
        copias << QStringLiteral("INSERT INTO %1 (%2) SELECT %2 FROM demo.%1;")
                      .arg(tabla,
                           BaseTemporal::valorDe(archivo, "SELECT group_concat(name) FROM pragma_table_info('" + tabla + "')"));
    BaseTemporal::ejecutarEn(archivo, QStringLiteral("ATTACH '%1' AS demo; %2").arg(demo, copias.join(QLatin1Char(' '))));
    ::chmod(QFile::encodeName(archivo).constData(), 0600); // the rights are another test's
}

QStringList esquemasAnteriores()
{
    return QDir(QStringLiteral(ESQUEMAS)).entryList({QStringLiteral("esquema-*.sql")}, QDir::Files, QDir::Name);
}

} // namespace

class PruebaLibros : public QObject {
    Q_OBJECT
private slots:
    // A database of each earlier schema is brought to today's, once, after a
    // copy, every row kept, and then works as a new one does.
    void seActualizaCadaEsquemaAnterior_data()
    {
        QTest::addColumn<QString>("fijo");
        for (const QString& nombre : esquemasAnteriores())
            QTest::newRow(qPrintable(nombre)) << QDir(QStringLiteral(ESQUEMAS)).filePath(nombre);
        QVERIFY(esquemasAnteriores().size() >= 6);
    }
    void seActualizaCadaEsquemaAnterior()
    {
        QFETCH(QString, fijo);
        QTemporaryDir dir;
        BaseTemporal demo(true);
        BaseTemporal nueva(false);
        const QString archivo = dir.filePath(QStringLiteral("ramil.db"));
        baseAntigua(archivo, fijo, demo.archivo());
        QCOMPARE(Revision::Version_De(archivo), 0);
        QVERIFY(esquema(archivo) != esquema(nueva.archivo()));

        Inicio inicio(enCarpeta(archivo));
        QVERIFY2(inicio.sigue, qPrintable(inicio.avisos.join(QLatin1Char('\n'))));
        QCOMPARE(inicio.avisos, QStringList());
        QCOMPARE(Revision::Version_De(archivo), Revision::Version_Programa());
        QCOMPARE(esquema(archivo), esquema(nueva.archivo()));
        for (const char* tabla : {"MOVIMIENTOS", "clientes", "proveedor", "servicios", "servicios_usdt", "bancos", "fotos",
                                  "parametros", "notificaciones", "dolar_NEW"})
            QCOMPARE(filasDe(archivo, tabla), filasDe(demo.archivo(), tabla));
        QCOMPARE(BaseTemporal::valorDe(archivo, "PRAGMA integrity_check"), QStringLiteral("ok"));
        // the copy taken first is the old book as it was
        const QString copia = dir.filePath(
            QStringLiteral("copias/ramil-2026-11-24-antes-de-esquema-%1.db").arg(Revision::Version_Programa()));
        QCOMPARE(Revision::Version_De(copia), 0);
        QCOMPARE(filasDe(copia, "MOVIMIENTOS"), filasDe(demo.archivo(), "MOVIMIENTOS"));

        // once: a second start changes nothing and copies nothing
        const QByteArray antes = huella(archivo);
        QVERIFY(Inicio(enCarpeta(archivo)).sigue);
        QCOMPARE(huella(archivo), antes);
        QCOMPARE(QDir(dir.filePath("copias")).entryList(QDir::Files).size(), 1);

        // an entry on the upgraded book gets its version like on a new one
        ServidorEmbebido servidor(archivo);
        servidor.abrir();
        entrada(servidor, "20200101", 1);
        QVERIFY(BaseTemporal::valorDe(archivo, "SELECT version FROM MOVIMIENTOS_VERSION WHERE FECHA = '20200101' "
                                               "AND SECUENCIA = 1")
                    .toLongLong() > 0);
    }

    // A step that fails leaves the book as it was, and the message names the copy.
    void unaActualizacionFallidaNoTocaNada()
    {
        QTemporaryDir dir;
        BaseTemporal demo(true);
        const QString archivo = dir.filePath(QStringLiteral("ramil.db"));
        baseAntigua(archivo, QDir(QStringLiteral(ESQUEMAS)).filePath(esquemasAnteriores().first()), demo.archivo());
        // a note longer than today's column takes: the table cannot be made anew with it
        BaseTemporal::ejecutarEn(
            archivo, QStringLiteral("UPDATE MOVIMIENTOS SET obs = '%1' WHERE rowid = 5").arg(QString(501, QLatin1Char('x'))));
        const QString antes = esquema(archivo);
        const QString filas = filasDe(archivo, "MOVIMIENTOS");

        Inicio inicio(enCarpeta(archivo));
        QVERIFY(!inicio.sigue);
        unAviso(inicio.avisos, {"quedó como estaba", dir.filePath("copias/ramil-2026-11-24-antes-de-esquema-"), "CHECK"});
        QCOMPARE(esquema(archivo), antes);
        QCOMPARE(filasDe(archivo, "MOVIMIENTOS"), filas);
        QCOMPARE(Revision::Version_De(archivo), 0);
    }

    // A book of a newer program is refused, untouched, by the start-up and by an open.
    void unaBaseMasNuevaSeRechaza()
    {
        BaseTemporal base(false);
        base.sql(QStringLiteral("PRAGMA user_version = %1").arg(Revision::Version_Programa() + 1));
        const QByteArray antes = huella(base.archivo());
        Inicio inicio(enCarpeta(base.archivo()));
        QVERIFY(!inicio.sigue);
        unAviso(inicio.avisos, {"versión más nueva"});
        QCOMPARE(huella(base.archivo()), antes);
        QVERIFY(!QDir(base.carpeta() + "/copias").exists());
        ServidorEmbebido servidor(base.archivo());
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, servidor.abrir());
    }

    // The demo is made only at a new installation's own place; a configured
    // path that is not there is asked about, and made empty only on a yes.
    void unaRutaEquivocadaNoSeVuelveLibrosFalsos()
    {
        QTemporaryDir dir;
        Despliegue d = enCarpeta(dir.filePath(QStringLiteral("disco/no/montado/ramil.db")));
        Inicio no(d, Mensajes::vbNo);
        QVERIFY(!no.sigue);
        unAviso(no.avisos, {d.archivo});
        QVERIFY(!QFileInfo::exists(dir.filePath("disco")));

        QVERIFY(Inicio(d, Mensajes::vbYes).sigue);
        QCOMPARE(BaseTemporal::valorDe(d.archivo, "SELECT (SELECT count(*) FROM MOVIMIENTOS) + (SELECT count(*) FROM "
                                                  "clientes) + (SELECT count(*) FROM servicios)"),
                 QStringLiteral("0"));
        QCOMPARE(BaseTemporal::valorDe(d.archivo, "SELECT count(*) FROM fotos"), QStringLiteral("2"));
        QCOMPARE(modos({d.archivo, dir.filePath("disco"), dir.filePath("disco/no/montado")}), QStringLiteral("600 700 700"));
    }

    // A damaged book is told before anyone types, with the newest sound copy.
    void unaBaseDanadaSeDiceAlEmpezar()
    {
        BaseTemporal base(true);
        const Despliegue d = enCarpeta(base.archivo());
        QCOMPARE(int(Copias::Copia_Diaria(base.archivo(), {}, 30, kHoy.addDays(-1)).estado),
                 int(Copias::Resultado::Estado::Hecha));
        const QString copia = base.carpeta() + "/copias/prueba-2026-11-23.db";
        {
            QFile f(base.archivo()); // pages past the first overwritten
            QVERIFY(f.open(QIODevice::ReadWrite));
            f.seek(f.size() / 2);
            f.write(QByteArray(8192, '\xA5'));
        }
        Inicio danada(d);
        QVERIFY(!danada.sigue);
        unAviso(danada.avisos, {"está dañada", copia});
        // a file of zero length is not an empty book
        QFile(base.archivo()).resize(0);
        Inicio vacia(d);
        QVERIFY(!vacia.sigue);
        unAviso(vacia.avisos, {"el archivo está vacío", copia});
    }

    // Writes into a file that is no longer the one at the path are refused:
    // nothing acknowledged goes astray.
    void unArchivoMovidoNoRecibeEscrituras()
    {
        BaseTemporal base(false);
        BaseTemporal otra(false);
        ServidorEmbebido servidor(base.archivo());
        servidor.abrir();
        int reconocidas = 0;
        int rechazadas = 0;
        for (int n = 1; n <= 20; ++n) {
            if (n == 11) // a copy put in its place while the program runs
                QVERIFY(::rename(QFile::encodeName(otra.archivo()).constData(), QFile::encodeName(base.archivo()).constData()) ==
                        0);
            try {
                entrada(servidor, "20261124", n);
                ++reconocidas;
            } catch (const FalloEjecucion& f) {
                QVERIFY(f.texto().contains(QStringLiteral("ya no es el archivo")));
                ++rechazadas;
            }
        }
        QCOMPARE(reconocidas, 10);
        QCOMPARE(rechazadas, 10);
        // and a file deleted under it, likewise
        QVERIFY(QFile::remove(base.archivo()));
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion,
                                 servidor.procedimiento(QStringLiteral("TRU_IN_CLIENTES_01"), {Valor(QStringLiteral("ANA"))}));
    }

    // A new installation's first start: what holds the books is made for this
    // account only, and the copy it leaves, put back as the README tells, is
    // a database the program works on. What stands open to others later is
    // told once, and narrowed on a yes.
    void elPrimerArranqueDejaLibrosDeUnaCuentaYSuCopia()
    {
        QTemporaryDir dir;
        Despliegue d = enCarpeta(dir.filePath(QStringLiteral("datos/ramil.db")));
        d.archivoPorDefecto = true;
        d.carpetaRecibos = dir.filePath(QStringLiteral("RECIBOS"));
        d.archivoAvisos = dir.filePath(QStringLiteral("datos/avisos-permisos"));
        const QString copia = dir.filePath(QStringLiteral("datos/copias/ramil-2026-11-24.db"));
        {
            Arranque a(d);
            QCOMPARE(a.avisos, QStringList());
            QCOMPARE(modos({d.archivo, dir.filePath("datos"), dir.filePath("datos/copias"), copia}),
                     QStringLiteral("600 700 700 600"));
            QVERIFY(Copias::Base_Sana(copia));
            const QString cuantas = QStringLiteral("SELECT count(*) FROM MOVIMIENTOS");
            QCOMPARE(BaseTemporal::valorDe(copia, cuantas), BaseTemporal::valorDe(d.archivo, cuantas));
            QVERIFY(BaseTemporal::valorDe(copia, cuantas).toInt() > 100);

            Despliegue restaurada = enCarpeta(dir.filePath(QStringLiteral("restaurada/ramil.db")));
            QDir().mkpath(dir.filePath(QStringLiteral("restaurada")));
            QVERIFY(QFile::copy(copia, restaurada.archivo));
            Module1 otro(restaurada);
            otro.Conexion.ConnectionString = QStringLiteral("Provider=embebido;Data Source=") + restaurada.archivo;
            otro.Conexion.Open();
            LOGIN::Carga_Parametros(otro);
            QCOMPARE(otro.Clave, a.m.Clave);
            QCOMPARE(otro.N_Clientes, a.m.N_Clientes);
            QVERIFY(otro.N_Clientes > 100);
        }

        // opened to others by hand: told, and narrowed on a yes
        QDir().mkpath(d.carpetaRecibos);
        ::chmod(QFile::encodeName(d.archivo).constData(), 0644);
        ::chmod(QFile::encodeName(d.carpetaRecibos).constData(), 0755);
        unAviso(Inicio(d, Mensajes::vbYes).avisos, {d.archivo, d.carpetaRecibos});
        QCOMPARE(modos({d.archivo, d.carpetaRecibos}), QStringLiteral("600 700"));

        // a settings file with the server's password; a no is not asked again
        d.clave = QStringLiteral("secreta");
        d.archivoAjustes = dir.filePath(QStringLiteral("control-pagos.conf"));
        QVERIFY(QFile(d.archivoAjustes).open(QIODevice::WriteOnly));
        ::chmod(QFile::encodeName(d.archivoAjustes).constData(), 0644);
        unAviso(Inicio(d, Mensajes::vbNo).avisos, {d.archivoAjustes});
        QCOMPARE(modos({d.archivoAjustes}), QStringLiteral("644"));
        QCOMPARE(Inicio(d, Mensajes::vbNo).avisos, QStringList());
    }

    // The day's copy that cannot be made (its folder's parent is a file, which
    // refuses the folder to root as to any user, as a full disk would) is told
    // once, and LOGIN waits for the code on an open connection.
    void sinLugarParaLaCopiaElArranqueSigue()
    {
        BaseTemporal base(true);
        const QString archivoEnMedio = base.carpeta() + QStringLiteral("/ocupado");
        QVERIFY(QFile(archivoEnMedio).open(QIODevice::WriteOnly));
        Despliegue d = enCarpeta(base.archivo());
        d.carpetaCopias = archivoEnMedio + QStringLiteral("/copias");
        Arranque a(d);
        QCOMPARE(a.estilos, QList<int> {Mensajes::vbExclamation});
        unAviso(a.avisos, {"El trabajo sigue normalmente"});
        QVERIFY(a.avisos.value(0).startsWith(QStringLiteral("No se pudo hacer la copia diaria de la base de datos")));
        auto* login = static_cast<LOGIN*>(a.principal.Abierta(QStringLiteral("LOGIN")));
        QVERIFY(login && a.m.Conexion.Abierta() && !a.m.Clave.isEmpty());
        login->Text1->setText(QStringLiteral("3607"));
        QTest::keyClick(login->Text1, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(a.principal.Abierta(QStringLiteral("LOGIN")), nullptr);
    }

    // A logout's SIGTERM ends the program the ordinary way: the database is
    // closed and its log folded into the file.
    void unaSenalDeSalidaCierraLaBase()
    {
        QTemporaryDir dir;
        QProcess programa;
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        for (const auto& [variable, valor] : {std::pair {"HOME", dir.path()},
                                              {"XDG_CONFIG_HOME", dir.filePath("config")},
                                              {"XDG_DATA_HOME", dir.filePath("datos")},
                                              {"QT_QPA_PLATFORM", "offscreen"}})
            entorno.insert(variable, valor);
        programa.setProcessEnvironment(entorno);
        programa.start(QStringLiteral(PROGRAMA), {});
        QVERIFY(programa.waitForStarted());
        const QString wal = dir.filePath("datos/ControlDePagos/ramil.db-wal");
        // LOGIN opens the database: its log stands beside it while it is open
        for (int i = 0; i < 300 && !QFileInfo::exists(wal); ++i)
            QThread::msleep(50);
        QVERIFY(QFileInfo::exists(wal));
        ::kill(pid_t(programa.processId()), SIGTERM);
        QVERIFY(programa.waitForFinished(20000));
        QCOMPARE(programa.exitStatus(), QProcess::NormalExit);
        QCOMPARE(programa.exitCode(), 0);
        QVERIFY(!QFileInfo::exists(wal));
        QCOMPARE(Revision::Danos(dir.filePath("datos/ControlDePagos/ramil.db"), false), QString());
    }
};

REGISTRAR_PRUEBA(PruebaLibros);
#include "tst_libros.moc"
