#pragma once
// A new row of MOVIMIENTOS as the entry screens store it, column by column as
// the database holds it.
#include "base_temporal.h"

#include <QStringList>

inline QStringList filaGuardada(const BaseTemporal& base, const QString& fecha, int secuencia)
{
    QStringList r;
    for (const char* c :
         {"FECHA",      "SECUENCIA",    "C_CLIENTE",  "enviado",        "recibido",      "C_PROVEEDOR", "pago",      "C_BANCO",
          "REFERENCIA", "confirmacion", "operadora",  "tipo_operacion", "tipo_servicio", "ganancia",    "obs",       "g1",
          "g2",         "g3",           "fecha_pago", "hora_pago",      "dolar1",        "dolar2",      "bancozelle"})
        r << base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA='%2' and SECUENCIA=%3")
                            .arg(QLatin1String(c), fecha)
                            .arg(secuencia));
    return r;
}
