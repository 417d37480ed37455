#include "numeros.h"
#include "fallo.h"

#include <cfloat>
#include <cmath>

namespace Numeros {

namespace {

// Parses sign, digits with thousands marks and one decimal comma.
bool leer(const QString& texto, double& resultado)
{
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return false;
    QByteArray limpio;
    limpio.reserve(t.size());
    bool coma = false, digitos = false;
    int i = 0;
    if (t[0] == QLatin1Char('-') || t[0] == QLatin1Char('+')) {
        limpio.append(t[0].toLatin1());
        i = 1;
    }
    for (; i < t.size(); ++i) {
        const QChar c = t[i];
        if (c.isDigit() && c.unicode() < 128) {
            limpio.append(char(c.unicode()));
            digitos = true;
        } else if (c == QLatin1Char('.')) {
            if (coma)
                return false; // a thousands mark after the decimal mark
        } else if (c == QLatin1Char(',')) {
            if (coma)
                return false;
            coma = true;
            limpio.append('.');
        } else {
            return false;
        }
    }
    if (!digitos)
        return false;
    bool ok = false;
    resultado = limpio.toDouble(&ok);
    return ok;
}

double redondeoPar(double v)
{
    return std::nearbyint(v); // the default rounding mode is to nearest, ties to even
}

} // namespace

double CDbl(const QString& texto)
{
    if (texto.trimmed().isEmpty())
        return 0.0;
    double v = 0;
    if (!leer(texto, v))
        throw FalloEjecucion::tiposNoCoinciden();
    return v;
}

bool EsNumerico(const QString& texto)
{
    double v = 0;
    return leer(texto, v);
}

int16_t CInt(double valor)
{
    const double r = redondeoPar(valor);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw FalloEjecucion::desbordamiento();
    return static_cast<int16_t>(r);
}

int32_t CLng(double valor)
{
    const double r = redondeoPar(valor);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw FalloEjecucion::desbordamiento();
    return static_cast<int32_t>(r);
}

float CSng(double valor)
{
    if (std::isfinite(valor) && std::fabs(valor) > FLT_MAX)
        throw FalloEjecucion::desbordamiento();
    return static_cast<float>(valor);
}

double Int(double valor) { return std::floor(valor); }
double Fix(double valor) { return std::trunc(valor); }

namespace {
QString escribir(double valor, int digitos)
{
    if (valor == 0)
        return QStringLiteral("0");
    QString s = QString::number(valor, 'g', digitos);
    if (s.contains(QLatin1Char('e'))) {
        s.replace(QLatin1Char('e'), QLatin1Char('E'));
    }
    s.replace(QLatin1Char('.'), QLatin1Char(','));
    return s;
}
} // namespace

QString Str(double valor) { return escribir(valor, 15); }
QString StrSng(float valor) { return escribir(static_cast<double>(valor), 7); }

} // namespace Numeros
