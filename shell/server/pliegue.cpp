#include "pliegue.h"

#include <sqlite3.h>

QString Pliega(const QString& texto)
{
    // Decomposed, a letter with an accent is the plain letter followed by its
    // marks; the marks go, the plain letter stays.
    const QString descompuesto = texto.normalized(QString::NormalizationForm_D);
    QString r;
    r.reserve(descompuesto.size());
    for (const QChar c : descompuesto)
        if (c.category() != QChar::Mark_NonSpacing)
            r.append(c);
    return r.toUpper();
}

namespace {

// A name's two keys: the letters in capitals without their accents, Ñ as N
// followed by a mark that sorts after every letter; and the accents alone.
struct Claves {
    QString letras;
    QString acentos;
};

Claves claves(const QString& texto)
{
    Claves r;
    const QString descompuesto = texto.normalized(QString::NormalizationForm_D);
    r.letras.reserve(descompuesto.size());
    for (qsizetype i = 0; i < descompuesto.size(); ++i) {
        const QChar c = descompuesto[i];
        if (c.category() != QChar::Mark_NonSpacing) {
            r.letras.append(c.toUpper());
            r.acentos.append(QLatin1Char(' '));
        } else if (c == QChar(0x0303) && !r.letras.isEmpty() && r.letras.back() == QLatin1Char('N')) {
            r.letras.append(QLatin1Char('[')); // after 'Z', so N~ comes after every N and before O
        } else {
            r.acentos.append(c);
        }
    }
    return r;
}

int funcionEspanol(void*, int largoA, const void* a, int largoB, const void* b)
{
    return Compara_Espanol(QString::fromUtf8(static_cast<const char*>(a), largoA),
                           QString::fromUtf8(static_cast<const char*>(b), largoB));
}

void funcionPliega(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    const auto* crudo = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    const QByteArray r = Pliega(QString::fromUtf8(crudo, sqlite3_value_bytes(argv[0]))).toUtf8();
    sqlite3_result_text(ctx, r.constData(), int(r.size()), SQLITE_TRANSIENT);
}

} // namespace

int Registra_Pliega(sqlite3* bd)
{
    return sqlite3_create_function_v2(bd, "pliega", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                      funcionPliega, nullptr, nullptr, nullptr);
}

int Compara_Espanol(const QString& a, const QString& b)
{
    const Claves x = claves(a), y = claves(b);
    const int letras = QString::compare(x.letras, y.letras, Qt::CaseSensitive);
    return letras != 0 ? letras : QString::compare(x.acentos, y.acentos, Qt::CaseSensitive);
}

int Registra_Espanol(sqlite3* bd)
{
    return sqlite3_create_collation_v2(bd, "ESPANOL", SQLITE_UTF8, nullptr, funcionEspanol, nullptr);
}
