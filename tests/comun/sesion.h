#pragma once
// A session as an operator has it after the access code: a temporary database
// (the demo, unless told), the connection open, parameters and reference cache
// loaded, the main window shown with the screens the test program links
// (tests/comun/pantallas/). Message boxes are answered here and kept, so a
// test can read what the program said.
#include "base_temporal.h"
#include "mdiform1.h"
#include "module1.h"

#include <QStringList>
#include <functional>
#include <memory>

class Pantalla;

namespace Pruebas {
// The screens of one subsystem, made known to every session of the program
// that links their fixture; each screen is registered under its class's name.
struct Pantallas {
    explicit Pantallas(std::function<void(MDIForm1&)> registro);
};
template <class T> void registrar(MDIForm1& p, const char* nombre)
{
    p.Registrar(QString::fromLatin1(nombre), [](Module1& m, MDIForm1& principal) -> Pantalla* { return new T(m, principal); });
}
} // namespace Pruebas

class SesionDePrueba {
public:
    explicit SesionDePrueba(bool conDemo = true) : SesionDePrueba(conDemo, QString()) {}
    // The same session on another server, by the connection string of the
    // program (a SQL Server's, say); the temporary folder keeps the receipts.
    explicit SesionDePrueba(const QString& cadenaConexion) : SesionDePrueba(false, cadenaConexion) {}
    ~SesionDePrueba();

    BaseTemporal base;
    std::unique_ptr<Module1> m;
    std::unique_ptr<MDIForm1> principal;

    // Every box shown, in order, with its style.
    struct Mensaje {
        QString texto;
        int estilo;
    };
    QList<Mensaje> mensajes;
    // What the next boxes answer (vbOK unless a test says otherwise).
    int respuesta;

    // Opens a screen by its name, as its menu entry does, and lets its
    // activation run.
    template <class T> T* abrir(const QString& nombre) { return static_cast<T*>(abrirPantalla(nombre)); }
    QString ultimoMensaje() const { return mensajes.isEmpty() ? QString() : mensajes.last().texto; }
    QStringList textos() const
    {
        QStringList r;
        for (const Mensaje& m : mensajes)
            r << m.texto;
        return r;
    }

private:
    SesionDePrueba(bool conDemo, const QString& cadenaConexion);
    Pantalla* abrirPantalla(const QString& nombre);
};
