#include "formato.h"
#include "numeros.h"
#include "valor.h"

#include <array>
#include <charconv>
#include <cmath>

FormatoNumero::FormatoNumero(const QString& patron) : patron_(patron)
{
    bool enDecimales = false;
    int primerCero = -1; // index among the integer places of the first "0"
    const qsizetype n = patron.size();
    auto literal = [&](char16_t c) {
        if (enDecimales)
            decimal_.append({Pieza::Literal, c});
        else
            entero_.append({Pieza::Literal, c});
    };
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = patron[i].unicode();
        switch (c) {
        case u'0':
        case u'#': {
            const Pieza p = c == u'0' ? Pieza::Cero : Pieza::Almohadilla;
            if (enDecimales) {
                decimal_.append({p, c});
                ++maximoDecimal_;
                if (p == Pieza::Cero)
                    minimoDecimal_ = maximoDecimal_;
            } else {
                if (p == Pieza::Cero && primerCero < 0)
                    primerCero = lugaresEnteros_;
                entero_.append({p, c});
                ++lugaresEnteros_;
            }
            deTexto_ = false;
            break;
        }
        case u'.':
            if (!enDecimales) {
                enDecimales = true;
                tienePunto_ = true;
            }
            break; // a second "." has no meaning and is dropped
        case u',':
            if (!enDecimales)
                agrupa_ = true;
            break;
        case u'\\':
            if (i + 1 < n)
                literal(patron[++i].unicode());
            break;
        case u'"':
            while (++i < n && patron[i] != QLatin1Char('"'))
                literal(patron[i].unicode());
            break;
        default:
            literal(c);
        }
    }
    minimoEntero_ = primerCero < 0 ? 0 : lugaresEnteros_ - primerCero;
}

namespace {

// The rounded number as a string of decimal digits N, so that the value is
// N / 10^decimales; half away from zero, on 15 significant digits.
void redondear(double absoluto, int decimales, QVarLengthArray<char, 40>& n)
{
    n.clear();
    if (absoluto == 0) {
        n.append('0');
        return;
    }
    // d.dddddddddddddde[+-]x: 15 significant digits.
    std::array<char, 40> buf {};
    const auto r = std::to_chars(buf.data(), buf.data() + buf.size(), absoluto, std::chars_format::scientific, 14);
    const char* fin = r.ptr;
    char digitos[15];
    digitos[0] = buf[0];
    for (int i = 0; i < 14; ++i)
        digitos[i + 1] = buf[2 + i];
    int exponente = 0;
    std::from_chars(buf.data() + 17 + (buf[17] == '+' ? 1 : 0), fin, exponente);

    const long guardar = long(exponente) + 1 + decimales; // digits that stay
    if (guardar <= 0) {
        n.append(guardar == 0 && digitos[0] >= '5' ? '1' : '0');
        return;
    }
    if (guardar >= 15) {
        n.append(digitos, 15);
        for (long i = 15; i < guardar; ++i)
            n.append('0');
        return;
    }
    n.append(digitos, qsizetype(guardar));
    if (digitos[guardar] >= '5') {
        qsizetype i = n.size() - 1;
        while (i >= 0 && n[i] == '9')
            n[i--] = '0';
        if (i >= 0)
            ++n[i];
        else
            n.insert(n.cbegin(), '1');
    }
}

} // namespace

QString FormatoNumero::aplicar(double valor) const
{
    if (deTexto_ || !std::isfinite(valor))
        return Numeros::Str(valor);

    QVarLengthArray<char, 40> n;
    redondear(std::fabs(valor), maximoDecimal_, n);

    bool cero = true;
    for (char c : n)
        cero = cero && c == '0';
    const bool negativo = valor < 0 && !cero;

    // Integer digits without leading zeros, and the decimal digits.
    if (n.size() < maximoDecimal_ + 1)
        n.insert(n.cbegin(), maximoDecimal_ + 1 - n.size(), '0');
    const qsizetype finEntero = n.size() - maximoDecimal_;
    qsizetype inicio = 0;
    while (inicio < finEntero && n[inicio] == '0')
        ++inicio;
    QVarLengthArray<char, 40> entero;
    for (qsizetype i = finEntero - (std::max<qsizetype>(finEntero - inicio, minimoEntero_)); i < finEntero; ++i)
        entero.append(i < 0 ? '0' : n[i]);
    const char* decimales = n.data() + finEntero;
    int escritos = maximoDecimal_;
    while (escritos > minimoDecimal_ && decimales[escritos - 1] == '0')
        --escritos;

    // The integer part is laid out from the right, digit k counted from the
    // units; the leftmost place takes all the digits that remain.
    QVarLengthArray<char16_t, 48> inverso;
    const qsizetype total = entero.size();
    qsizetype k = 0;
    auto digito = [&]() {
        if (agrupa_ && k > 0 && k % 3 == 0)
            inverso.append(u'.');
        inverso.append(char16_t(entero[total - 1 - k]));
        ++k;
    };
    if (lugaresEnteros_ == 0)
        while (k < total)
            digito();
    int lugar = lugaresEnteros_;
    for (qsizetype i = entero_.size() - 1; i >= 0; --i) {
        const Elemento& e = entero_[i];
        if (e.pieza == Pieza::Literal) {
            inverso.append(e.caracter);
        } else if (--lugar == 0) {
            while (k < total)
                digito();
        } else if (k < total) {
            digito();
        }
    }

    QString s;
    s.reserve(inverso.size() + decimal_.size() + 2);
    if (negativo)
        s.append(QLatin1Char('-'));
    for (qsizetype i = inverso.size() - 1; i >= 0; --i)
        s.append(QChar(inverso[i]));
    if (tienePunto_)
        s.append(QLatin1Char(','));
    int d = 0;
    for (const Elemento& e : decimal_) {
        if (e.pieza == Pieza::Literal)
            s.append(QChar(e.caracter));
        else if (d < escritos)
            s.append(QLatin1Char(decimales[d++]));
    }
    return s;
}

namespace {

// The few patterns of a screen recur row after row: a small cache keeps them
// compiled. One thread works the screens; each thread has its own cache.
const FormatoNumero& compilado(const QString& patron)
{
    constexpr int kTamano = 16;
    thread_local std::array<FormatoNumero, kTamano> cache;
    thread_local int usados = 0;
    thread_local int siguiente = 0;
    for (int i = 0; i < usados; ++i)
        if (cache[i].patron() == patron)
            return cache[i];
    const int lugar = usados < kTamano ? usados++ : (siguiente++ % kTamano);
    cache[lugar] = FormatoNumero(patron);
    return cache[lugar];
}

} // namespace

QString Format(double valor, const QString& patron) { return compilado(patron).aplicar(valor); }

QString Format(const QString& texto, const QString& patron)
{
    const FormatoNumero& f = compilado(patron);
    if (f.esDeTexto() || !Numeros::EsNumerico(texto))
        return texto;
    return f.aplicar(Numeros::CDbl(texto));
}

QString Format(const char* texto, const QString& patron) { return Format(QString::fromUtf8(texto), patron); }

QString Format(const Valor& valor, const QString& patron)
{
    if (valor.esNulo())
        return {};
    if (valor.esEntero() || valor.esReal())
        return Format(valor.aDouble(), patron);
    return Format(valor.aTexto(), patron);
}
