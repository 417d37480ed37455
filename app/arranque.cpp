#include "arranque.h"
#include "bancos.h"
#include "bancos_zelle.h"
#include "clientes.h"
#include "conceptos.h"
#include "form_servicios.h"
#include "proveedores.h"
#include "fallo.h"
#include "f5_usdt.h"
#include "form2.h"
#include "form2_pago.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "movimientos.h"

#include <QDir>
#include <QScreen>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <new>

Aplicacion::Aplicacion(int& argc, char** argv) : QApplication(argc, argv)
{
    setOrganizationName(QStringLiteral("ControlDePagos"));
    setApplicationName(QStringLiteral("control-pagos"));
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
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("ControlDePagos"),
                QStringLiteral("control-pagos"));
    Despliegue d;
    const QString datos = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                          QStringLiteral("/ControlDePagos");
    d.tipo = s.value(QStringLiteral("servidor/tipo")).toString().compare(QLatin1String("sqlserver"), Qt::CaseInsensitive) == 0
                 ? Despliegue::Tipo::SqlServer
                 : Despliegue::Tipo::Embebido;
    d.archivo = s.value(QStringLiteral("servidor/archivo"), datos + QStringLiteral("/ramil.db")).toString();
    d.servidor = s.value(QStringLiteral("servidor/host")).toString();
    d.puerto = s.value(QStringLiteral("servidor/puerto"), 1433).toInt();
    d.clave = s.value(QStringLiteral("servidor/clave")).toString();
    d.carpetaRecibos = s.value(QStringLiteral("recibos/carpeta"), QDir::homePath() + QStringLiteral("/RECIBOS")).toString();
    d.impresora = s.value(QStringLiteral("recibos/impresora")).toString();
    d.web = s.value(QStringLiteral("recibos/web")).toString();
    if (d.tipo == Despliegue::Tipo::Embebido)
        QDir().mkpath(QFileInfo(d.archivo).absolutePath());
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
}

int Ejecutar_Programa(Aplicacion& app, const Despliegue& despliegue)
{
    Module1 m(despliegue);
    MDIForm1 principal(m);
    Registra_Pantallas(principal);
    // The whole screen, also where no window manager maximizes it.
    principal.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    principal.showMaximized();
    // LOGIN opens inside the event loop, so that a failure of the start-up
    // reaches the run-time report like any other.
    QTimer::singleShot(0, &principal, [&principal] { principal.Mostrar(QStringLiteral("LOGIN")); });
    return app.exec();
}
