#pragma once
// The transactions that the console benchmarks load: `total` of them over
// kDias days from kPrimerDia, on the demo's reference tables.
#include "embebido.h"
#include "medicion.h"

#include <QDate>

namespace movimientos_de_consola {

inline const QDate kPrimerDia(2025, 1, 1);
inline constexpr int kDias = 50;

// The demo's reference tables, and `total` transactions over kDias days:
// most paid, some returned, the rest unpaid, of every kind of service.
inline void llenar(const QString& archivo, int total)
{
    ServidorEmbebido::crearBase(archivo, true);
    ejecutarEnArchivo(
        archivo,
        QStringLiteral(
            "DELETE FROM MOVIMIENTOS;"
            "WITH RECURSIVE n(k) AS (SELECT 0 UNION ALL SELECT k + 1 FROM n WHERE k < %1 - 1),"
            " f AS (SELECT k, strftime('%Y%m%d', date('%2', '+' || (k % %3) || ' days')) AS fecha, k / %3 + 1 AS sec,"
            "            (k * 2654435761) % 1000 AS x FROM n),"
            " g AS (SELECT f.*, CASE x % 6 WHEN 0 THEN 1 WHEN 1 THEN 2 WHEN 2 THEN 5 WHEN 3 THEN 9 WHEN 4 THEN 50 ELSE 55 END AS serv,"
            "              CASE WHEN x < 700 THEN '0134' WHEN x < 720 THEN '7777' ELSE '' END AS banco FROM f)"
            "INSERT INTO MOVIMIENTOS SELECT fecha, sec, 1 + x * 3 % 3999, 20 + x, 18 + x * 0.9,"
            " CASE banco WHEN '0134' THEN 1 + x % 12 ELSE 0 END, CASE banco WHEN '' THEN 0 ELSE (18 + x * 0.9) * 330 END,"
            " banco, CASE banco WHEN '0134' THEN printf('%08d', x * 7919) ELSE '' END, CASE banco WHEN '' THEN 0 ELSE 330.5 END,"
            " CAST(1 + x % 2 AS TEXT), 2, serv, 0, '', 0, 0, '', CASE banco WHEN '' THEN 100 ELSE 5.5 END,"
            " CASE WHEN x % 37 = 0 THEN 'URGENTE' ELSE '' END, 1.25, 1.25, 0,"
            " CASE banco WHEN '0134' THEN fecha ELSE '' END, CASE banco WHEN '0134' THEN '10:20:30' ELSE '' END,"
            " 365.5, 372.8, '0' FROM g;")
            .arg(total)
            .arg(kPrimerDia.toString(QStringLiteral("yyyy-MM-dd")))
            .arg(kDias)
            .toUtf8());
}

} // namespace movimientos_de_consola
