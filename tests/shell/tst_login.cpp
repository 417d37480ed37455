// Start-up and the main window: the connection, the parameters, the access
// code and what the menus allow before and after it; the connection's
// failures in Spanish.
#include "base_temporal.h"
#include "fallo.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "prueba.h"
#include "servidor.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTcpServer>

namespace {

// A screen that only counts its activations.
class PantallaDePrueba : public Pantalla {
public:
    PantallaDePrueba(Module1& m, MDIForm1& p, int& activaciones)
        : Pantalla(m, p, QStringLiteral("BANCOS")), activaciones_(activaciones)
    {
    }
    void Form_Activate() override { ++activaciones_; }

private:
    int& activaciones_;
};

// The main window with LOGIN open on a database, F1's screen counting.
struct Arranque {
    explicit Arranque(const BaseTemporal& base)
    {
        Despliegue d;
        d.archivo = base.archivo();
        m = std::make_unique<Module1>(d);
        principal = std::make_unique<MDIForm1>(*m);
        principal->Registrar(QStringLiteral("BANCOS"), [this](Module1& mod, MDIForm1& p) {
            ++abiertas;
            return new PantallaDePrueba(mod, p, activaciones);
        });
        principal->show();
        login = static_cast<LOGIN*>(principal->Mostrar(QStringLiteral("LOGIN")));
        QCoreApplication::processEvents();
    }
    // The working menus, "1" for each one enabled.
    QString menus() const
    {
        QString r;
        for (const char* nombre : {"TABLAS", "MOVI", "CONSULTA", "ESTADISTICAS"})
            r += principal->menu(QString::fromLatin1(nombre))->menuAction()->isEnabled() ? u'1' : u'0';
        return r;
    }
    void teclear(const QString& codigo)
    {
        login->Text1->setText(codigo);
        QTest::keyClick(login->Text1, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    void pulsar(Qt::Key tecla)
    {
        QTest::keyClick(principal.get(), tecla);
        QCoreApplication::processEvents();
    }
    std::unique_ptr<Module1> m;
    std::unique_ptr<MDIForm1> principal;
    LOGIN* login = nullptr;
    int abiertas = 0;
    int activaciones = 0;
};

// Notes every widget painted in the application.
class FiltroDePintura : public QObject {
public:
    explicit FiltroDePintura(std::function<void(QObject*)> nota) : nota_(std::move(nota))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (e->type() == QEvent::Paint)
            nota_(o);
        return false;
    }

private:
    std::function<void(QObject*)> nota_;
};

} // namespace

class PruebaLogin : public QObject {
    Q_OBJECT
private slots:
    // Before the code: the caption, the working menus and their shortcuts
    // off, the parameters and the cache loaded; a wrong code is wiped, and
    // LOGIN closed without the code leaves all of it off.
    void sinElCodigoLosMenusEstanApagados()
    {
        BaseTemporal base(true);
        Arranque a(base);
        QVERIFY(a.login && a.m->Conexion.Abierta());
        QCOMPARE(a.principal->windowTitle(), QStringLiteral("RAMIL  Contról de Pagos versión = 25.09.18  (Linux)"));
        QCOMPARE(a.menus(), QStringLiteral("0000"));
        QVERIFY(a.principal->menu(QStringLiteral("calcula"))->menuAction()->isEnabled());
        QVERIFY(!a.m->Clave.isEmpty() && a.m->N_Clientes > 1000);
        for (Qt::Key f : {Qt::Key_F1, Qt::Key_F2, Qt::Key_F4, Qt::Key_F5, Qt::Key_F8, Qt::Key_F9})
            a.pulsar(f);
        QCOMPARE(a.abiertas, 0);
        a.teclear(QStringLiteral("0000"));
        QVERIFY(a.login->Text1->text().isEmpty());
        QCOMPARE(a.menus(), QStringLiteral("0000"));
        a.login->Unload();
        QCoreApplication::processEvents();
        QCOMPARE(a.menus(), QStringLiteral("0000"));
        a.pulsar(Qt::Key_F1);
        QCOMPARE(a.abiertas, 0);
    }

    // The code opens the menus and leaves the keyboard to the shortcuts: F1
    // opens its screen, a second F1 only brings it to the front (a new
    // activation when another stood before it). The USDT entries stay off.
    void conElCodigoLasTeclasAbrenSuPantalla()
    {
        BaseTemporal base(true);
        Arranque a(base);
        a.teclear(QStringLiteral("  3607 "));
        QCOMPARE(a.menus(), QStringLiteral("1111"));
        QCOMPARE(a.m->Nivel, false);
        QCOMPARE(a.principal->Abierta(QStringLiteral("LOGIN")), nullptr);
        QCOMPARE(a.principal->focusWidget(), a.principal->area());
        a.pulsar(Qt::Key_F1);
        a.pulsar(Qt::Key_F1);
        QCOMPARE(a.abiertas, 1);
        QCOMPARE(a.activaciones, 1);
        QMdiSubWindow* otra = a.principal->area()->addSubWindow(new QWidget);
        otra->show();
        a.principal->area()->setActiveSubWindow(otra);
        QCoreApplication::processEvents();
        a.pulsar(Qt::Key_F1);
        QCOMPARE(a.abiertas, 1);
        QCOMPARE(a.activaciones, 2);
        for (const char* nombre : {"SERVI_USDT", "CONSULTAS_USDT", "ESTADISTICAS_USDT", "ESTADISTICAS_MENSUALES_USDT"}) {
            const QAction* e = a.principal->entrada(QString::fromLatin1(nombre));
            QVERIFY2(!e->isEnabled() && !e->isVisible(), nombre);
        }
    }

    // The server's own code, capitals counting; an empty box against an empty code.
    void codigoDelServidor()
    {
        for (const auto& [clave, errado, bueno] : {std::tuple {"Abc9", "abc9", " Abc9 "}, {"", "x", ""}}) {
            BaseTemporal base(true);
            base.sql(QStringLiteral("UPDATE parametros SET Clave = '%1'").arg(QLatin1String(clave)));
            Arranque a(base);
            a.teclear(QLatin1String(errado));
            QCOMPARE(a.menus(), QStringLiteral("0000"));
            a.teclear(QLatin1String(bueno));
            QCOMPARE(a.menus(), QStringLiteral("1111"));
            QCOMPARE(a.m->Nivel, true);
        }
    }

    // A SQL Server that refuses the connection ends LOGIN with the report, in time.
    void servidorInalcanzableTerminaConElReporte()
    {
        QTcpServer libre;
        QVERIFY(libre.listen(QHostAddress::LocalHost));
        Despliegue d;
        d.tipo = Despliegue::Tipo::SqlServer;
        d.servidor = QStringLiteral("127.0.0.1");
        d.puerto = libre.serverPort();
        libre.close(); // nothing listens on it any more
        Module1 m(d);
        MDIForm1 principal(m);
        QElapsedTimer reloj;
        reloj.start();
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, principal.Mostrar(QStringLiteral("LOGIN")));
        QVERIFY(reloj.elapsed() < 10500);
        QVERIFY(!m.Conexion.Abierta());
    }

    // As the program starts: the main window and LOGIN painted (its box
    // black) before the connection opens; the box white once it is open.
    void laVentanaSePintaAntesDeConectar()
    {
        BaseTemporal base(true);
        Despliegue d;
        d.archivo = base.archivo();
        Module1 m(d);
        MDIForm1 principal(m);
        bool menus = false, cajaNegra = false, cajaVista = false;
        FiltroDePintura filtro([&](QObject* o) {
            if (m.Conexion.Abierta())
                return;
            menus = menus || o == principal.menuBar();
            auto* caja = qobject_cast<QLineEdit*>(o);
            if (caja && qobject_cast<LOGIN*>(caja->parent())) {
                cajaVista = true;
                cajaNegra = caja->palette().color(QPalette::Base) == QColor(Qt::black);
            }
        });
        principal.show();
        auto* login = static_cast<LOGIN*>(principal.Mostrar(QStringLiteral("LOGIN")));
        QVERIFY(login && m.Conexion.Abierta());
        QVERIFY(menus && cajaVista && cajaNegra);
        QCOMPARE(login->Text1->palette().color(QPalette::Base), QColor(Qt::white));
    }

    // The program's own words for a provider it does not have.
    void conexion_fallida_en_castellano()
    {
        try {
            crearServidor(QStringLiteral("Provider=oracle;Data Source=x"))->abrir();
            QFAIL("an unknown provider opened");
        } catch (const FalloEjecucion& f) {
            QCOMPARE(
                f.texto(),
                QStringLiteral("No se puede encontrar el proveedor. Es posible que no esté instalado correctamente. (oracle)"));
        }
    }
};

REGISTRAR_PRUEBA(PruebaLogin);
#include "tst_login.moc"
