#include "permisos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Permisos {

bool Crear_Carpeta(const QString& carpeta)
{
    const QString absoluta = QDir::cleanPath(QFileInfo(carpeta).absoluteFilePath());
    if (QFileInfo(absoluta).isDir())
        return true;
    const QString arriba = QFileInfo(absoluta).path();
    if (arriba != absoluta && !Crear_Carpeta(arriba))
        return false;
    // Another client starting at the same moment may make it first.
    return ::mkdir(QFile::encodeName(absoluta).constData(), 0700) == 0 || QFileInfo(absoluta).isDir();
}

bool Crear_Archivo(const QString& archivo)
{
    const int fd = ::open(QFile::encodeName(archivo).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    const bool bien = ::fchmod(fd, 0600) == 0;
    ::close(fd);
    return bien;
}

bool Abierto_A_Otros(const QString& ruta)
{
    struct stat st {};
    if (::stat(QFile::encodeName(ruta).constData(), &st) != 0)
        return false;
    return (st.st_mode & 077) != 0;
}

bool Cerrar(const QString& ruta)
{
    const mode_t modo = QFileInfo(ruta).isDir() ? 0700 : 0600;
    return ::chmod(QFile::encodeName(ruta).constData(), modo) == 0;
}

} // namespace Permisos
