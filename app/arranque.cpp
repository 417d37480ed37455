#include "arranque.h"
#include "libros.h"
#include "calculos01.h"
#include "calculos01_usdt.h"
#include "bancos.h"
#include "bancos_zelle.h"
#include "clientes.h"
#include "conceptos.h"
#include "dolar.h"
#include "dolar_new.h"
#include "copias.h"
#include "form_servicios.h"
#include "proveedores.h"
#include "resumen_mensual.h"
#include "fallo.h"
#include "f5_usdt.h"
#include "form2.h"
#include "form1.h"
#include "form2_pago.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "movimientos.h"
#include "new_dolar.h"
#include "servicios_usdt.h"

#include <QDir>
#include <QScreen>
#include <QFileInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QSettings>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>
#include <QTranslator>

#include <new>

#include <cstdio>
#include <string_view>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

const char kAyuda[] = "Uso: control-pagos [OPCIÓN]\n"
                      "Registro, pago y recibos de las remesas de la casa de cambio.\n"
                      "\n"
                      "Sin opciones abre la ventana principal con la pantalla LOGIN, que conecta con\n"
                      "el servidor y espera el código de acceso.\n"
                      "\n"
                      "  -h, --help      muestra esta ayuda y termina\n"
                      "  -v, --version   muestra la versión y termina\n"
                      "\n"
                      "Ajustes: ~/.config/ControlDePagos/control-pagos.conf. Sin ellos, la base de\n"
                      "datos incorporada ~/.local/share/ControlDePagos/ramil.db, con sus copias\n"
                      "diarias en la carpeta copias/ a su lado.\n"
                      "Las claves de los ajustes, las copias, cómo restaurar una y el código de\n"
                      "acceso: man control-pagos\n";

} // namespace

int Responde_Opciones(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view opcion(argv[i]);
        if (opcion == "-h" || opcion == "--help")
            std::fputs(kAyuda, stdout);
        else if (opcion == "-v" || opcion == "--version")
            std::fputs("control-pagos (Control de Pagos) " VERSION_PROGRAMA "\n", stdout);
        else
            continue;
        // A text that could not be written (a full disk, a closed pipe) is a failure.
        return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
    }
    return -1;
}

Aplicacion::Aplicacion(int& argc, char** argv) : QApplication(argc, argv)
{
    setOrganizationName(QStringLiteral("ControlDePagos"));
    setApplicationName(QStringLiteral("control-pagos"));
    setApplicationVersion(QStringLiteral(VERSION_PROGRAMA));
    // The icon and the menu entry of the installed package.
    setDesktopFileName(QStringLiteral("control-pagos"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("control-pagos")));
    Carga_Traducciones();
}

bool Carga_Traducciones()
{
    // One translator for the application's life; a new application loads anew.
    static QPointer<QTranslator> qt;
    if (qt)
        return true;
    auto* traductor = new QTranslator(QCoreApplication::instance());
    if (!traductor->load(QLocale(QLocale::Spanish, QLocale::Venezuela), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete traductor;
        return false;
    }
    QCoreApplication::installTranslator(traductor);
    qt = traductor;
    return true;
}

bool Aplicacion::notify(QObject* receptor, QEvent* evento)
{
    return Atiende_Fallo([&] { return QApplication::notify(receptor, evento); });
}

bool Atiende_Fallo(const std::function<bool()>& accion)
{
    try {
        return accion();
    } catch (const FalloEjecucion& fallo) {
        Mensajes::Reporte_Fallo(fallo);
    } catch (const std::bad_alloc&) {
        Mensajes::Reporte_Fallo(FalloEjecucion(7));
    } catch (const std::exception&) {
        Mensajes::Reporte_Fallo(FalloEjecucion(51));
    }
    QCoreApplication::exit(1);
    return false;
}

Despliegue Lee_Despliegue()
{
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("ControlDePagos"), QStringLiteral("control-pagos"));
    Despliegue d;
    const QString datos = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                          QStringLiteral("/ControlDePagos");
    d.tipo = s.value(QStringLiteral("servidor/tipo")).toString().compare(QLatin1String("sqlserver"), Qt::CaseInsensitive) == 0
                 ? Despliegue::Tipo::SqlServer
                 : Despliegue::Tipo::Embebido;
    d.archivoPorDefecto = !s.contains(QStringLiteral("servidor/archivo"));
    d.archivo = s.value(QStringLiteral("servidor/archivo"), datos + QStringLiteral("/ramil.db")).toString();
    d.archivoAjustes = s.fileName();
    d.archivoAvisos = datos + QStringLiteral("/avisos-permisos");
    d.servidor = s.value(QStringLiteral("servidor/host")).toString();
    d.puerto = s.value(QStringLiteral("servidor/puerto"), 1433).toInt();
    d.clave = s.value(QStringLiteral("servidor/clave")).toString();
    d.carpetaRecibos = s.value(QStringLiteral("recibos/carpeta"), QDir::homePath() + QStringLiteral("/RECIBOS")).toString();
    d.impresora = s.value(QStringLiteral("recibos/impresora")).toString();
    d.web = s.value(QStringLiteral("recibos/web")).toString();
    d.tituloInforme = s.value(QStringLiteral("informe/titulo")).toString();
    d.carpetaCopias = s.value(QStringLiteral("copias/carpeta")).toString();
    d.copiasGuardadas = s.value(QStringLiteral("copias/cuantas"), 30).toInt();
    return d;
}

void Registra_Pantallas(MDIForm1& p)
{
    p.Registrar(QStringLiteral("Movimientos"), [](Module1& m, MDIForm1& p) { return new Movimientos(m, p); });
    p.Registrar(QStringLiteral("BANCOS"), [](Module1& m, MDIForm1& p) { return new BANCOS(m, p); });
    p.Registrar(QStringLiteral("BANCOS_ZELLE"), [](Module1& m, MDIForm1& p) { return new BANCOS_ZELLE(m, p); });
    p.Registrar(QStringLiteral("Clientes"), [](Module1& m, MDIForm1& p) { return new Clientes(m, p); });
    p.Registrar(QStringLiteral("Proveedores"), [](Module1& m, MDIForm1& p) { return new Proveedores(m, p); });
    p.Registrar(QStringLiteral("CONCEPTOS"), [](Module1& m, MDIForm1& p) { return new CONCEPTOS(m, p); });
    p.Registrar(QStringLiteral("Form_SERVICIOS"), [](Module1& m, MDIForm1& p) { return new Form_SERVICIOS(m, p); });
    p.Registrar(QStringLiteral("Form2"), [](Module1& m, MDIForm1& p) { return new Form2(m, p); });
    p.Registrar(QStringLiteral("Form2_Pago"), [](Module1& m, MDIForm1& p) { return new Form2_Pago(m, p); });
    p.Registrar(QStringLiteral("F5_USDT"), [](Module1& m, MDIForm1& p) { return new F5_USDT(m, p); });
    p.Registrar(QStringLiteral("NEW_DOLAR"), [](Module1& m, MDIForm1& p) { return new NEW_DOLAR(m, p); });
    p.Registrar(QStringLiteral("SERVICIOS_USDT"), [](Module1& m, MDIForm1& p) { return new SERVICIOS_USDT(m, p); });
    p.Registrar(QStringLiteral("Dolar"), [](Module1& m, MDIForm1& p) { return new Dolar(m, p); });
    p.Registrar(QStringLiteral("DOLAR_NEW"), [](Module1& m, MDIForm1& p) { return new DOLAR_NEW(m, p); });
    // The batch entry screen has no menu entry; it is known by its name only.
    p.Registrar(QStringLiteral("Form1"), [](Module1& m, MDIForm1& p) { return new Form1(m, p); });
    p.Registrar(QStringLiteral("CALCULOS01"), [](Module1& m, MDIForm1& p) { return new CALCULOS01(m, p); });
    p.Registrar(QStringLiteral("Resumen_mensual"), [](Module1& m, MDIForm1& p) { return new Resumen_mensual(m, p); });
    p.Registrar(QStringLiteral("CALCULOS01_USDT"), [](Module1& m, MDIForm1& p) { return new CALCULOS01_USDT(m, p); });
    p.Registrar(QStringLiteral("RESUMEN_MENSUAL_USDT"), [](Module1& m, MDIForm1& p) { return new RESUMEN_MENSUAL_USDT(m, p); });
}

namespace {

int tuboDeSenales[2] = {-1, -1};

void alRecibirSenal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto escrito = ::write(tuboDeSenales[1], &c, 1);
}

} // namespace

void Termina_Con_Senales(QObject* dueno)
{
    // A logout or a shutdown sends SIGTERM (a terminal, SIGHUP or SIGINT). The
    // handler only writes a byte; the event loop then ends the program the
    // ordinary way, so that the database is closed and its log folded in.
    if (tuboDeSenales[0] < 0 && ::pipe2(tuboDeSenales, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* aviso = new QSocketNotifier(tuboDeSenales[0], QSocketNotifier::Read, dueno);
    QObject::connect(aviso, &QSocketNotifier::activated, dueno, [] {
        char c;
        while (::read(tuboDeSenales[0], &c, 1) > 0) {}
        QCoreApplication::quit();
    });
    struct sigaction accion {};
    accion.sa_handler = alRecibirSenal;
    sigemptyset(&accion.sa_mask);
    accion.sa_flags = SA_RESTART;
    for (int senal : {SIGTERM, SIGHUP, SIGINT})
        ::sigaction(senal, &accion, nullptr);
}

int Ejecutar_Programa(Aplicacion& app, const Despliegue& despliegue)
{
    Termina_Con_Senales(&app);
    Module1 m(despliegue);
    MDIForm1 principal(m);
    Registra_Pantallas(principal);
    // The whole screen, also where no window manager maximizes it.
    principal.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    principal.showMaximized();
    // LOGIN opens inside the event loop, so that a failure of the start-up
    // reaches the run-time report like any other.
    QTimer::singleShot(0, &principal, [&principal, &despliegue] { Arrancar(principal, despliegue, QDate::currentDate()); });
    return app.exec();
}

void Arrancar(MDIForm1& principal, const Despliegue& despliegue, const QDate& hoy)
{
    // The books are checked, and made or brought up to date, before anyone types.
    if (!Prepara_Base(despliegue, hoy)) {
        QCoreApplication::exit(1);
        return;
    }
    // The copy follows LOGIN's first activation, which opens (and on the first
    // start creates) the database: the main window's own handler of the
    // activation was connected first and runs before this one.
    if (despliegue.tipo == Despliegue::Tipo::Embebido) {
        auto enlace = std::make_shared<QMetaObject::Connection>();
        *enlace = QObject::connect(principal.area(), &QMdiArea::subWindowActivated, &principal,
                                   [enlace, despliegue, hoy](QMdiSubWindow* ventana) {
                                       if (!ventana)
                                           return;
                                       QObject::disconnect(*enlace);
                                       Copia_Del_Dia(despliegue, hoy);
                                   });
    }
    principal.Mostrar(QStringLiteral("LOGIN"));
}

void Copia_Del_Dia(const Despliegue& despliegue, const QDate& hoy)
{
    const Copias::Resultado r = Copias::Copia_Diaria(despliegue.archivo, despliegue.carpetaCopias, despliegue.copiasGuardadas,
                                                     hoy);
    if (r.estado == Copias::Resultado::Estado::Fallida)
        Mensajes::MsgBox(r.error, Mensajes::vbExclamation);
}
