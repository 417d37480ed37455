#include "copias.h"
#include "permisos.h"
#include "revision.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QThread>

#include <sqlite3.h>
#include <cstdio>
#include <memory>

namespace Copias {

namespace {

struct CierraBase {
    void operator()(sqlite3* bd) const { sqlite3_close_v2(bd); }
};
using Base = std::unique_ptr<sqlite3, CierraBase>;

Base abrir(const QString& archivo, int modo)
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(QFile::encodeName(archivo).constData(), &bd, modo, nullptr);
    Base b(bd);
    if (bd)
        sqlite3_busy_timeout(bd, 10000); // another client may be writing at this moment
    return b;
}

// What the engine said, in the operator's words where the cause is a common one.
QString causa(sqlite3* bd, int rc)
{
    switch (rc & 0xff) {
    case SQLITE_FULL:
        return QStringLiteral("el disco está lleno");
    case SQLITE_CANTOPEN:
        return QStringLiteral("no se puede crear el archivo");
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return QStringLiteral("no hay permiso para escribir");
    case SQLITE_IOERR:
        return QStringLiteral("error de escritura en el disco");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("la base de datos está ocupada");
    default:
        break;
    }
    return bd ? QString::fromUtf8(sqlite3_errmsg(bd)) : QString::fromUtf8(sqlite3_errstr(rc));
}

Resultado fallida(const QString& archivo, const QString& porque)
{
    Resultado r;
    r.estado = Resultado::Estado::Fallida;
    r.archivo = archivo;
    r.error = QStringLiteral("No se pudo hacer la copia diaria de la base de datos en\n%1\n(%2).\n\n"
                             "El trabajo sigue normalmente; avise al encargado de los equipos.")
                  .arg(QDir::toNativeSeparators(archivo), porque);
    return r;
}

void borrar(const QString& archivo)
{
    for (const char* sufijo : {"", "-wal", "-shm", "-journal"})
        QFile::remove(archivo + QLatin1String(sufijo));
}

QRegularExpression patron(const QString& base)
{
    const QFileInfo f(base);
    const QString sufijo = f.suffix().isEmpty() ? QString() : QLatin1Char('.') + f.suffix();
    return QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(f.completeBaseName()) +
                              QStringLiteral("-(\\d{4}-\\d{2}-\\d{2})") + QRegularExpression::escape(sufijo) + QLatin1Char('$'));
}

// Writes the copy into 'destino' with the online backup: one step holds one
// read snapshot of the source, so rows written meanwhile by other clients are
// either wholly in the copy or wholly out of it.
QString respaldar(const QString& base, const QString& destino)
{
    Base origen = abrir(base, SQLITE_OPEN_READWRITE);
    if (!origen || sqlite3_errcode(origen.get()) != SQLITE_OK)
        return causa(origen.get(), origen ? sqlite3_errcode(origen.get()) : SQLITE_CANTOPEN);
    Base copia = abrir(destino, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (!copia || sqlite3_errcode(copia.get()) != SQLITE_OK)
        return causa(copia.get(), copia ? sqlite3_errcode(copia.get()) : SQLITE_CANTOPEN);

    sqlite3_backup* respaldo = sqlite3_backup_init(copia.get(), "main", origen.get(), "main");
    if (!respaldo)
        return causa(copia.get(), sqlite3_errcode(copia.get()));
    int rc = SQLITE_OK;
    for (int intento = 0; intento < 50; ++intento) {
        rc = sqlite3_backup_step(respaldo, -1);
        if (rc != SQLITE_BUSY && rc != SQLITE_LOCKED)
            break;
        QThread::msleep(100);
    }
    sqlite3_backup_finish(respaldo);
    if (rc != SQLITE_DONE)
        return causa(copia.get(), rc);
    const int final = sqlite3_errcode(copia.get());
    if (final != SQLITE_OK)
        return causa(copia.get(), final);
    // The copy stands as one plain file, to be kept or restored on its own.
    rc = sqlite3_exec(copia.get(), "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK)
        return causa(copia.get(), rc);
    if (sqlite3_close(copia.release()) != SQLITE_OK)
        return QStringLiteral("no se pudo cerrar el archivo");
    return {};
}

} // namespace

QString Nombre_Copia(const QString& base, const QDate& dia)
{
    const QFileInfo f(base);
    const QString sufijo = f.suffix().isEmpty() ? QString() : QLatin1Char('.') + f.suffix();
    return f.completeBaseName() + QLatin1Char('-') + dia.toString(QStringLiteral("yyyy-MM-dd")) + sufijo;
}

QStringList Copias_En(const QString& base, const QString& carpeta)
{
    const QRegularExpression p = patron(base);
    QStringList r;
    const QDir dir(carpeta);
    for (const QString& nombre : dir.entryList(QDir::Files, QDir::Name))
        if (p.match(nombre).hasMatch())
            r << dir.filePath(nombre);
    return r; // the date in the name sorts them by day
}

bool Base_Sana(const QString& archivo, bool rapida) { return Revision::Danos(archivo, rapida).isEmpty(); }

QString Carpeta_De_Copias(const QString& base, const QString& carpeta)
{
    return carpeta.isEmpty() ? QFileInfo(base).absolutePath() + QStringLiteral("/copias") : carpeta;
}

QString Copia_Sana_Mas_Reciente(const QString& base, const QString& carpeta)
{
    const QStringList copias = Copias_En(base, Carpeta_De_Copias(base, carpeta));
    for (auto it = copias.crbegin(); it != copias.crend(); ++it)
        if (Base_Sana(*it, true))
            return *it;
    return {};
}

namespace {

// Writes a sound copy of 'base' as 'destino': under a name of its own first,
// so that two clients starting at once both end with the one sound copy, and
// put in place with rename() only once it passed the check. Empty, or why not.
QString escribirCopia(const QString& base, const QString& destino)
{
    // What a copy cut off by a crash left behind goes a day later.
    const QDir dir(QFileInfo(destino).absolutePath());
    for (const QFileInfo& resto :
         dir.entryInfoList({QFileInfo(base).completeBaseName() + QStringLiteral("-*.parcial-*")}, QDir::Files))
        if (resto.lastModified().daysTo(QDateTime::currentDateTime()) >= 1)
            QFile::remove(resto.filePath());
    const QString parcial = destino + QStringLiteral(".parcial-%1-%2")
                                          .arg(QCoreApplication::applicationPid())
                                          .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
    borrar(parcial);
    // A copy holds the whole books: readable by this account only, as the database.
    if (!Permisos::Crear_Archivo(parcial))
        return QStringLiteral("no se puede crear el archivo");
    if (const QString error = respaldar(base, parcial); !error.isEmpty()) {
        borrar(parcial);
        return error;
    }
    if (!Base_Sana(parcial)) {
        borrar(parcial);
        return QStringLiteral("la copia escrita no pasó la revisión de integridad");
    }
    // rename() puts it in place in one step, over a damaged copy of the day if any.
    if (std::rename(QFile::encodeName(parcial).constData(), QFile::encodeName(destino).constData()) != 0) {
        borrar(parcial);
        return QStringLiteral("no se pudo dar su nombre a la copia");
    }
    return {};
}

} // namespace

Resultado Copia_Diaria(const QString& base, const QString& carpetaDada, int cuantas, const QDate& hoy)
{
    const QString carpeta = Carpeta_De_Copias(base, carpetaDada);
    const QString destino = QDir(carpeta).filePath(Nombre_Copia(base, hoy));
    if (cuantas <= 0)
        return {Resultado::Estado::Apagada, QString(), QString()};
    if (!QFileInfo(base).isFile())
        return fallida(destino, QStringLiteral("no se encuentra la base de datos %1").arg(base));
    if (!Permisos::Crear_Carpeta(carpeta))
        return fallida(destino, QStringLiteral("no se puede crear la carpeta de copias"));

    // The newest copy of this day (or later, should the clock have gone back)
    // counts only when it is sound; a damaged one is made again.
    const QRegularExpression p = patron(base);
    const QStringList existentes = Copias_En(base, carpeta);
    for (auto it = existentes.crbegin(); it != existentes.crend(); ++it) {
        const QDate dia = QDate::fromString(p.match(QFileInfo(*it).fileName()).captured(1), QStringLiteral("yyyy-MM-dd"));
        if (dia < hoy)
            break;
        if (Base_Sana(*it, true))
            return {Resultado::Estado::AlDia, *it, QString()};
    }
    if (const QString error = escribirCopia(base, destino); !error.isEmpty())
        return fallida(destino, error);

    // Only now, with a sound copy of today in place, do the oldest go.
    QStringList todas = Copias_En(base, carpeta);
    while (todas.size() > cuantas)
        borrar(todas.takeFirst());
    return {Resultado::Estado::Hecha, destino, QString()};
}

Resultado Copia_Previa(const QString& base, const QString& carpetaDada, const QString& motivo, const QDate& hoy)
{
    const QString carpeta = Carpeta_De_Copias(base, carpetaDada);
    const QFileInfo f(base);
    const QString sufijo = f.suffix().isEmpty() ? QString() : QLatin1Char('.') + f.suffix();
    const QString destino = QDir(carpeta).filePath(f.completeBaseName() + QLatin1Char('-') +
                                                   hoy.toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char('-') + motivo +
                                                   sufijo);
    if (!Permisos::Crear_Carpeta(carpeta))
        return fallida(destino, QStringLiteral("no se puede crear la carpeta de copias"));
    if (const QString error = escribirCopia(base, destino); !error.isEmpty())
        return fallida(destino, error);
    return {Resultado::Estado::Hecha, destino, QString()};
}

} // namespace Copias
