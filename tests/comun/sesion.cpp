#include "sesion.h"
#include "login.h"
#include "mensajes.h"
#include "pantalla.h"

#include <QCoreApplication>

namespace {
std::vector<std::function<void(MDIForm1&)>>& registros()
{
    static std::vector<std::function<void(MDIForm1&)>> r;
    return r;
}
} // namespace

Pruebas::Pantallas::Pantallas(std::function<void(MDIForm1&)> registro) { registros().push_back(std::move(registro)); }

SesionDePrueba::SesionDePrueba(bool conDemo, const QString& cadenaConexion) : base(conDemo), respuesta(Mensajes::vbOK)
{
    Despliegue d;
    d.archivo = base.archivo();
    d.carpetaRecibos = base.carpeta() + QStringLiteral("/RECIBOS");
    if (cadenaConexion.startsWith(QLatin1String("Provider=sqlserver"), Qt::CaseInsensitive))
        d.tipo = Despliegue::Tipo::SqlServer;
    m = std::make_unique<Module1>(d);
    m->Conexion.ConnectionString = cadenaConexion.isEmpty() ? base.cadenaConexion() : cadenaConexion;
    m->Conexion.Open();
    LOGIN::Carga_Parametros(*m);
    principal = std::make_unique<MDIForm1>(*m);
    for (const auto& registro : registros())
        registro(*principal);
    principal->Habilita_Menus(true);
    principal->show();
    Mensajes::Reemplazar([this](const QString& texto, int estilo, const QString&) {
        mensajes.append({texto, estilo});
        return respuesta;
    });
}

SesionDePrueba::~SesionDePrueba()
{
    Mensajes::Reemplazar({});
    principal.reset();
}

Pantalla* SesionDePrueba::abrirPantalla(const QString& nombre)
{
    Pantalla* p = principal->Mostrar(nombre);
    QCoreApplication::processEvents();
    return p;
}
