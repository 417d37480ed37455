#pragma once
#include <QString>

// What the consoles' tests share: banks, clients, a concept, providers 1 and 2
// with their commissions and gifts, the rates of services 1 (TRUMIN), 5, 55
// (pesos, in dollars through rate 4) and 60 (USDT), the day's dollar at 40;
// then the transactions given, each with every column a console reads.
inline QString conReferencia(const char* movimientos)
{
    return QStringLiteral(R"(
INSERT INTO bancos VALUES (102, 'BANCO DE VENEZUELA'), (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'MARIA PEREZ', ''), (13, 'JOSE DIAZ', ''), (14, 'JOSÉ PEÑA', ''),
    (15, 'PEDRO PENTON', '');
INSERT INTO conceptos VALUES (2, 'AYUDA FAMILIAR');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo)
    VALUES (1, 'ORINOCO', 40, 1.0, 10, 0), (2, 'LLANO', 30, 2.0, 7.5, 0);
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
    VALUES (1, 'DOLAR', 400, 0, 0, 0), (2, 'BASE', 410, 0, 0, 0), (4, 'PESOS', 4000, 0, 55, 1);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364), (5, 'BANESCO PANAMA EXPRESS', 5, 2, 1, 'N', 380),
           (55, 'PESOS COLOMBIA', 5, 4, 2, 'M', 0.0975), (60, 'USDT BINANCE PAY', 0, 2, 1, 'U', 41.5);
INSERT INTO parametros VALUES ('1234', '', '', 40);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, REFERENCIA,
                         confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3,
                         fecha_pago, hora_pago, dolar1, dolar2, bancozelle) VALUES)") +
           QString::fromUtf8(movimientos) + QLatin1Char(';');
}

// Six rows of 10/03/2025, two of 09/03/2025 and one of 2024, each with something to show:
//  1 unpaid TRUMIN (estimate from what was received, cut to whole bolivars)
//  2 unpaid BANESCO PANAMA (from what was sent, cut)
//  3 unpaid PESOS COLOMBIA (service 55: decimals kept, received recalculated)
//  4 returned to the client (7777)
//  5 paid by BANESCO, provider 2 with a commission of 2 %
//  6 paid with a one-character bank code
// and on 09/03 two clients with accents and a note to search for.
inline const char* const kDiezDeMarzo = R"(
 ('20250310', 1, 12, 100, 94.3, 0, 0, '', '', 0, '1', 2, 1, 100, '', 94.3, 94.3, 0, '', '', 0, 0, '0'),
 ('20250310', 2, 13, 20.5, 20.5, 0, 0, '', '', 0, '2', 2, 5, 100, 'URGENTE', 20.5, 20.5, 0, '', '', 0, 0, '0'),
 ('20250310', 3, 12, 123450, 30, 0, 0, '', '', 0, '1', 2, 55, 100, '', 30, 30, 0, '', '', 0, 0, '0'),
 ('20250310', 4, 12, 20, 18.62, 0, 5000, '7777', '', 350, '1', 2, 1, 3, '', 1, 1, 0, '', '', 0, 0, '0'),
 ('20250310', 5, 13, 200, 188.9, 2, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 10.39, 0,
  '20250311', '10:00:00', 398, 405, '3'),
 ('20250310', 6, 12, 10, 10, 1, 3000, '5', 'X', 300, '1', 2, 1, 2, '', 0.5, 0.5, 0.2, '20250311', '11:00:00', 1, 1, '0'),
 ('20250309', 1, 14, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0'),
 ('20250309', 2, 15, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, 'llamar a Ñico', 10, 10, 0, '', '', 0, 0, '0'),
 ('20240105', 1, 12, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0')
)";
