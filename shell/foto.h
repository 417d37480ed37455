#pragma once
// The client's photograph, as the client and entry screens show it. Pictures
// live in the table fotos; row 0 is the picture for a client without a photo
// and row 9999 the warning picture for a client under review. Pictures are
// shown straight from memory.
#include <QByteArray>
#include <QString>

class Module1;
class QLabel;

namespace Foto {

// The bytes to show for a client ("0000" code as the screen has it). A client
// under review always gets row 9999. Without a row of his own he gets row 0,
// and sinFoto, when given, is set.
QByteArray Lee(Module1& m, const QString& codigo, bool enRevision, bool* sinFoto = nullptr);

// Shows the picture in an image control, scaled to fit and keeping its shape.
// Bytes that are no picture the control can read are a run-time failure.
void Muestra(QLabel* imagen, const QByteArray& bytes);

// The longest side, in pixels, of a stored picture: more than the largest
// place where a photo is shown (the large picture of Clientes, 747 wide, and
// of the entry screen, 612 high).
constexpr int Lado_Maximo = 800;

// What is stored of a picture file: the picture as the camera held it (its
// turn noted in the file applied), brought down to Lado_Maximo on each side
// keeping its shape, never enlarged, as a JPEG: a phone's photo of several
// MB takes a small part of that in the database. Bytes that are no picture
// are a run-time failure.
QByteArray Para_Grabar(const QByteArray& archivo);

// The folder where the search for a picture file starts: the user's
// pictures, or the home folder when there is none.
QString Carpeta_De_Fotos();

} // namespace Foto
