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
