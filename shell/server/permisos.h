#pragma once
// Who may read the books. The database, its copies and the receipts hold the
// business's clients and money: they are made readable by the operator's own
// account only (folders 0700, files 0600), and what already stands open to
// other accounts of the machine is found so that the start-up can say so.
#include <QString>
#include <QStringList>

namespace Permisos {

// Makes a folder and every missing one above it, each for this account only;
// folders that stand already keep their rights. True when the folder stands.
bool Crear_Carpeta(const QString& carpeta);

// Makes an empty file for this account only (or narrows the rights of one
// that stands). True when it can be written.
bool Crear_Archivo(const QString& archivo);

// True when other accounts of the machine may read (or, for a folder, enter) it.
bool Abierto_A_Otros(const QString& ruta);

// Narrows a file to 0600 and a folder to 0700. True when done.
bool Cerrar(const QString& ruta);

} // namespace Permisos
