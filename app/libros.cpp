#include "libros.h"
#include "copias.h"
#include "embebido.h"
#include "fallo.h"
#include "mensajes.h"
#include "permisos.h"
#include "revision.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace {

const QString kPasosRestaurar = QStringLiteral(
    "Para volver a trabajar:\n"
    "1. Cierre el programa en todas las sesiones de este equipo.\n"
    "2. Aparte el archivo dañado junto con sus archivos -wal y -shm.\n"
    "3. Copie en su lugar la copia elegida, con el nombre del archivo dañado.\n"
    "4. Vuelva a abrir el programa y cargue de nuevo lo registrado después de la copia.\n"
    "(Los pasos completos están en la sección «Restoring a copy» del README.)");

bool Crea_Base(const QString& archivo, bool conDemo)
{
    try {
        ServidorEmbebido::crearBase(archivo, conDemo);
    } catch (const FalloEjecucion& fallo) {
        if (QFileInfo::exists(archivo)) // another client made it meanwhile
            return true;
        Mensajes::MsgBox(
            QStringLiteral("No se pudo crear la base de datos\n%1\n(%2).").arg(QDir::toNativeSeparators(archivo), fallo.texto()),
            Mensajes::vbCritical);
        return false;
    }
    return true;
}

// A configured database that is not there: a mistyped path or a disk that is
// not mounted. Made, empty, only when the operator says so.
bool Base_Ausente(const QString& archivo)
{
    const int respuesta = Mensajes::MsgBox(
        QStringLiteral("No se encuentra la base de datos indicada en la configuración:\n%1\n\n"
                       "Puede que la ruta esté mal escrita o que el disco no esté conectado.\n\n"
                       "¿Desea crear allí una base de datos nueva y vacía, sin ninguna transacción?")
            .arg(QDir::toNativeSeparators(archivo)),
        Mensajes::vbYesNo + Mensajes::vbExclamation + 256);
    return respuesta == Mensajes::vbYes && Crea_Base(archivo, false);
}

bool Base_Danada(const Despliegue& d, const QString& danos)
{
    const QString copia = Copias::Copia_Sana_Mas_Reciente(d.archivo, d.carpetaCopias);
    const QString cual = copia.isEmpty()
                             ? QStringLiteral("No se encontró ninguna copia diaria sana en\n%1")
                                   .arg(QDir::toNativeSeparators(Copias::Carpeta_De_Copias(d.archivo, d.carpetaCopias)))
                             : QStringLiteral("La copia diaria sana más reciente es\n%1").arg(QDir::toNativeSeparators(copia));
    Mensajes::MsgBox(QStringLiteral("La base de datos\n%1\nestá dañada: %2.\n\nNo se puede trabajar sobre ella. %3\n\n%4")
                         .arg(QDir::toNativeSeparators(d.archivo), danos, cual, kPasosRestaurar),
                     Mensajes::vbCritical);
    return false;
}

bool Actualiza_Esquema(const Despliegue& d, int version, const QDate& hoy)
{
    const int nueva = Revision::Version_Programa();
    if (version > nueva) {
        Mensajes::MsgBox(QStringLiteral("La base de datos\n%1\nfue actualizada por una versión más nueva del programa "
                                        "(esquema %2; este programa trabaja con el %3).\n\n"
                                        "No se tocó nada. Instale la versión actual del programa.")
                             .arg(QDir::toNativeSeparators(d.archivo))
                             .arg(version)
                             .arg(nueva),
                         Mensajes::vbCritical);
        return false;
    }
    const Copias::Resultado copia = Copias::Copia_Previa(d.archivo, d.carpetaCopias,
                                                         QStringLiteral("antes-de-esquema-%1").arg(nueva), hoy);
    if (copia.estado != Copias::Resultado::Estado::Hecha) {
        Mensajes::MsgBox(QStringLiteral("La base de datos debe actualizarse a esta versión del programa, pero antes no "
                                        "se pudo guardar una copia de ella.\n\n%1\n\nNo se tocó nada.")
                             .arg(copia.error),
                         Mensajes::vbCritical);
        return false;
    }
    try {
        Revision::Actualizar(d.archivo);
    } catch (const FalloEjecucion& fallo) {
        Mensajes::MsgBox(QStringLiteral("No se pudo actualizar la base de datos\n%1\na la versión de este programa "
                                        "(%2).\n\nLa base de datos quedó como estaba. Antes de intentarlo se guardó "
                                        "una copia de ella en\n%3\n\nAvise al encargado de los equipos.")
                             .arg(QDir::toNativeSeparators(d.archivo), fallo.texto(), QDir::toNativeSeparators(copia.archivo)),
                         Mensajes::vbCritical);
        return false;
    }
    return true;
}

bool Se_Puede_Escribir(const QString& archivo)
{
    // The engine also writes its log files beside the database.
    return ::access(QFile::encodeName(archivo).constData(), W_OK) == 0 &&
           ::access(QFile::encodeName(QFileInfo(archivo).absolutePath()).constData(), W_OK | X_OK) == 0;
}

// What other accounts of the machine may read, told once: the books, their
// copies, the receipts, and the settings when they hold the server's password.
void Avisa_Permisos(const Despliegue& d)
{
    QStringList rutas;
    if (d.tipo == Despliegue::Tipo::Embebido) {
        for (const char* sufijo : {"", "-wal", "-shm"})
            rutas << d.archivo + QLatin1String(sufijo);
        rutas << Copias::Carpeta_De_Copias(d.archivo, d.carpetaCopias);
    }
    rutas << d.carpetaRecibos;
    if (!d.clave.isEmpty())
        rutas << d.archivoAjustes;
    QStringList yaAvisadas;
    if (QFile f(d.archivoAvisos); !d.archivoAvisos.isEmpty() && f.open(QIODevice::ReadOnly))
        yaAvisadas = QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QStringList abiertas;
    for (const QString& ruta : rutas)
        if (!ruta.isEmpty() && Permisos::Abierto_A_Otros(ruta) && !yaAvisadas.contains(ruta))
            abiertas << ruta;
    if (abiertas.isEmpty())
        return;
    QStringList lista;
    for (const QString& ruta : abiertas)
        lista << QStringLiteral("  ") + QDir::toNativeSeparators(ruta);
    const int respuesta = Mensajes::MsgBox(
        QStringLiteral("Otras cuentas de este equipo pueden leer estos archivos y carpetas, que guardan los datos "
                       "de los clientes y el dinero del negocio:\n\n%1\n\n"
                       "¿Desea que solo esta cuenta pueda leerlos?")
            .arg(lista.join(QLatin1Char('\n'))),
        Mensajes::vbYesNo + Mensajes::vbExclamation);
    if (respuesta == Mensajes::vbYes) {
        for (const QString& ruta : abiertas)
            Permisos::Cerrar(ruta);
        return;
    }
    // Not asked again for these.
    if (QFile f(d.archivoAvisos); !d.archivoAvisos.isEmpty() &&
                                  Permisos::Crear_Carpeta(QFileInfo(d.archivoAvisos).absolutePath()) && f.open(QIODevice::Append))
        f.write((abiertas.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
}

} // namespace

bool Prepara_Base(const Despliegue& d, const QDate& hoy)
{
    if (d.tipo == Despliegue::Tipo::Embebido) {
        if (!QFileInfo::exists(d.archivo)) {
            // The demo books belong to a new installation's own place only.
            if (d.archivoPorDefecto ? !Crea_Base(d.archivo, true) : !Base_Ausente(d.archivo))
                return false;
        }
        if (const QString danos = Revision::Danos(d.archivo); !danos.isEmpty())
            return Base_Danada(d, danos);
        if (const int version = Revision::Version_De(d.archivo);
            version != Revision::Version_Programa() && !Actualiza_Esquema(d, version, hoy))
            return false;
        if (!Se_Puede_Escribir(d.archivo))
            Mensajes::MsgBox(QStringLiteral("La base de datos\n%1\nes de solo lectura para esta cuenta: puede consultar, "
                                            "pero nada de lo que se registre podrá grabarse.\n\n"
                                            "Avise al encargado de los equipos antes de registrar transacciones.")
                                 .arg(QDir::toNativeSeparators(d.archivo)),
                             Mensajes::vbExclamation);
    }
    Avisa_Permisos(d);
    return true;
}
