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

} // namespace Foto
