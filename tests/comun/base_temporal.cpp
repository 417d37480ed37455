#include "base_temporal.h"
#include "embebido.h"

#include <sqlite3.h>
#include <stdexcept>

BaseTemporal::BaseTemporal(bool conDemo)
{
    archivo_ = dir_.filePath(QStringLiteral("prueba.db"));
    ServidorEmbebido::crearBase(archivo_, conDemo);
}

QString BaseTemporal::cadenaConexion() const { return QStringLiteral("Provider=embebido;Data Source=%1").arg(archivo_); }

void BaseTemporal::ejecutarEn(const QString& archivo, const QString& texto)
{
    sqlite3* bd = nullptr;
    sqlite3_open(archivo.toUtf8().constData(), &bd);
    char* error = nullptr;
    const int rc = sqlite3_exec(bd, texto.toUtf8().constData(), nullptr, nullptr, &error);
    const QString mensaje = error ? QString::fromUtf8(error) : QString();
    sqlite3_free(error);
    sqlite3_close(bd);
    if (rc != SQLITE_OK)
        throw std::runtime_error(("test SQL failed: " + mensaje + " in " + texto).toStdString());
}

QString BaseTemporal::valorDe(const QString& archivo, const QString& consulta)
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* st = nullptr;
    QString r;
    if (sqlite3_prepare_v2(bd, consulta.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK && sqlite3_step(st) == SQLITE_ROW)
        r = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    sqlite3_close(bd);
    return r;
}
