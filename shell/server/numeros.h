#pragma once
// Numbers as the business writes them, whatever the machine's locale:
// "," is the decimal mark and "." the thousands mark. These are the
// conversions of the original run-time: failures end the program.
#include <QString>
#include <cstdint>

namespace Numeros {

// Text to number: blanks around and thousands marks are ignored, "," is the
// decimal mark, an empty text is 0; any other text is a type mismatch.
double CDbl(const QString& texto);
// True when CDbl would accept the text (an empty text is not numeric).
bool EsNumerico(const QString& texto);

// Round half to even, as the run-time does; overflow is a failure.
int16_t CInt(double valor);
int32_t CLng(double valor);
// Through single precision, as the single-precision variables of the screens.
float CSng(double valor);
// Integer parts: Int toward minus infinity, Fix toward zero.
double Int(double valor);
double Fix(double valor);

// A number as the run-time writes it into a text: shortest form, decimal comma,
// no thousands marks (94.3 -> "94,3"). Single precision keeps 7 digits.
QString Str(double valor);
QString StrSng(float valor);

} // namespace Numeros
