-- Demo data of a new database: a business that has worked the last three
-- months, so that every screen shows something real on the first start.
--
-- Everything is generated here, deterministically: the "random" figures come
-- from a hash of each row's number (same file, same data, but for the dates,
-- which run up to the day the file is created). Figures of the day:
--   reference dollar 365.50 Bs (USDT row 1), base USDT price 372.80 Bs (row 2);
--   back in time the dollar falls by 0.28 % a day (about 292 Bs three months ago).
-- Services priced from the dollar (sw_calculos 1) carry
--   MONTO = dollar * (100 - porcentaje) / 100, cut to their decimals,
-- those priced from USDT (sw_calculos 2) MONTO = (100 - porcentaje) / 100 *
-- base / compra (div 1) or compra / base (div 2), rounded to 4 decimals:
-- the figures the rate panel would store.

-- Venezuelan banks, by their national code.
INSERT INTO bancos (C_Banco, D_banco) VALUES
    (102, 'BANCO DE VENEZUELA'), (104, 'VENEZOLANO DE CREDITO'), (105, 'MERCANTIL'),
    (108, 'BBVA PROVINCIAL'), (114, 'BANCARIBE'), (115, 'BANCO EXTERIOR'),
    (128, 'BANCO CARONI'), (134, 'BANESCO'), (137, 'SOFITASA'), (138, 'BANCO PLAZA'),
    (151, 'BFC BANCO FONDO COMUN'), (156, '100% BANCO'), (163, 'BANCO DEL TESORO'),
    (166, 'BANCO AGRICOLA DE VENEZUELA'), (171, 'BANCO ACTIVO'), (172, 'BANCAMIGA'),
    (174, 'BANPLUS'), (175, 'BANCO BICENTENARIO'), (191, 'BNC NACIONAL DE CREDITO');

INSERT INTO bancos_zelle (C_Banco, D_banco) VALUES
    (0, 'NINGUNO'), (1, 'BANK OF AMERICA'), (2, 'CHASE'), (3, 'WELLS FARGO'), (4, 'CITIBANK'),
    (5, 'TD BANK'), (6, 'CAPITAL ONE'), (7, 'PNC BANK'), (8, 'US BANK'), (9, 'TRUIST'), (10, 'OTRO BANCO');

INSERT INTO conceptos (C_CONCEPTO, D_CONCEPTO) VALUES
    (1, 'PAGO DE REMESA'), (2, 'AYUDA FAMILIAR'), (3, 'PAGO DE SERVICIOS'), (4, 'COMPRA DE MERCANCIA'),
    (5, 'PAGO DE ALQUILER'), (6, 'GASTOS MEDICOS'), (7, 'MATRICULA ESCOLAR'), (8, 'PAGO A PROVEEDOR'),
    (9, 'PRESTAMO'), (10, 'OTROS PAGOS');

-- Providers: porgan their share of the gain on USDT services, Comision the
-- percentage of the received dollars credited as gift; regalo and ultregalo
-- are worked out from the transactions at the end.
INSERT INTO proveedor (C_proveedor, D_proveedor, clave_pro, porgan, Comision, regalo, ultregalo) VALUES
    (1, 'INVERSIONES ORINOCO', 'IO', 40, 1.00, 0, 0),
    (2, 'CAMBIOS EL LLANO', 'CELL', 35, 0.75, 0, 0),
    (3, 'PAGOS RAPIDOS CCS', 'PRC', 50, 1.50, 0, 0),
    (4, 'JUAN CARLOS MENDOZA', 'JCM', 30, 0.50, 0, 0),
    (5, 'MULTISERVICIOS ANDES', 'MSA', 45, 1.00, 0, 0),
    (6, 'CARMEN ROJAS', 'CR', 30, 0.50, 0, 0),
    (7, 'DIVISAS DEL CARIBE', 'DDC', 40, 1.25, 0, 0),
    (8, 'ALEJANDRO GUZMAN', 'AG', 35, 0.75, 0, 0),
    (9, 'REMESAS MARACAIBO', 'RMB', 50, 1.50, 0, 0),
    (10, 'LUIS ALBERTO PEÑA', 'LAP', 30, 0.50, 0, 0),
    (11, 'SERVICIOS MARGARITA', 'SMG', 40, 1.00, 0, 0),
    (12, 'YELITZA FIGUERA', 'YF', 35, 0.75, 0, 0);

-- USDT prices: rows 1 and 2 are the references; the others price services 50 and up.
-- 50: USDT sent as such (1 USDT per USDT); 55: Colombian pesos per USDT;
-- 56: Peruvian soles per USDT; 58: bolivars per USDT on the cash market (div 2).
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES
    (1, 'DOLAR REFERENCIA', 365.50, 368.00, 0, 0),
    (2, 'USDT BASE', 372.80, 375.00, 0, 0),
    (3, 'USDT BINANCE', 1.0000, 1.0000, 50, 1),
    (4, 'PESOS COLOMBIA', 4150.0000, 4200.0000, 55, 1),
    (5, 'SOLES PERU', 3.7500, 3.8000, 56, 1),
    (6, 'USDT EFECTIVO BS', 370.0000, 374.0000, 58, 2);

-- Services: the four wallets with the letters the entry screen starts from,
-- service 9 with its own fee (2.9 % + 0.30), and the USDT-priced ones.
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO)
WITH s(c, d, p, dec, sw, l) AS (VALUES
        (1, 'TRUMIN', 9.00, 2, 1, 'T'), (2, 'ZELLE', 6.00, 2, 1, 'Z'), (3, 'ZINLI', 4.00, 2, 1, 'I'),
        (4, 'AMAZON', 15.00, 2, 1, 'A'), (5, 'BANESCO PANAMA', 5.00, 2, 1, 'N'), (6, 'WISE', 5.50, 2, 1, 'W'),
        (7, 'SKRILL', 10.00, 2, 1, 'K'), (9, 'PAYPAL', 8.00, 2, 1, 'P'),
        (50, 'USDT BINANCE', 3.00, 4, 2, 'U'), (55, 'PESOS COLOMBIA', 5.00, 4, 2, 'M'),
        (56, 'SOLES PERU', 5.00, 4, 2, 'L'), (58, 'USDT EFECTIVO BS', 3.00, 4, 2, 'B')),
     ref AS (SELECT (SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1) AS dolar,
                    (SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 2) AS base)
SELECT s.c, s.d, s.p, s.dec, s.sw, s.l, 'A',
       CASE WHEN s.sw = 1
            THEN CAST(round(ref.dolar * (100 - s.p) / 100, 5) * 100 AS INTEGER) / 100.0
            ELSE round((100 - s.p) / 100 * CASE u.div WHEN 1 THEN round(ref.base / u.compra, 4)
                                                      ELSE round(u.compra / ref.base, 4) END, 4)
       END
FROM s CROSS JOIN ref LEFT JOIN servicios_usdt u ON u.equivalencia = s.c;

-- Parameters: the demo's access code, the last update of rates and USDT prices
-- (this morning, or now when the file is made earlier), the day's dollar.
INSERT INTO parametros (Clave, Fecha, Fecha_Compraventas, Dolar)
SELECT '1234',
       min(datetime('now', 'localtime'), date('now', 'localtime') || ' 08:30:00'),
       min(datetime('now', 'localtime'), date('now', 'localtime') || ' 08:15:00'),
       (SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1);

-- The plain dollar screens show their Fecha as it stands: it is kept the way
-- the screen shows a moment. The wallet prices follow the dollar by the
-- factors of those screens.
INSERT INTO dolar (Fecha, valor) SELECT strftime('%d/%m/%Y %H:%M:%S', Fecha), Dolar FROM parametros;
INSERT INTO dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON)
SELECT strftime('%d/%m/%Y %H:%M:%S', Fecha), round(Dolar * 0.91, 2), round(Dolar * 0.94, 2),
       round(Dolar * 0.96, 2), round(Dolar * 0.85, 2)
FROM parametros;

INSERT INTO notificaciones (Codigo_proveedor, Nombre, titulo, mensaje, Fecha, tipo, leida) VALUES
    (3, 'PAGOS RAPIDOS CCS', 'SALDO BAJO', 'Saldo disponible menor a 5.000.000 Bs, favor reponer antes de las 2 pm',
     datetime('now', 'localtime', '-2 hours'), 'AVISO', 'NO'),
    (1, 'INVERSIONES ORINOCO', 'RETRASO EN PAGOS', 'Los pagos de la tarde salen despues de las 5 pm',
     datetime('now', 'localtime', '-5 hours'), 'URGENTE', 'NO'),
    (7, 'DIVISAS DEL CARIBE', 'CAMBIO DE CUENTA', 'Desde hoy los pagos a Banesco salen por la cuenta nueva',
     datetime('now', 'localtime', '-1 day'), 'INFORMATIVO', 'SI'),
    (9, 'REMESAS MARACAIBO', 'FERIADO', 'El lunes no hay pagos por feriado bancario',
     datetime('now', 'localtime', '-3 days'), 'INFORMATIVO', 'SI');

-- Clients: Venezuelan names made of first names and two surnames, picked by a
-- hash of the code; a few under review (Revisar '9999').
INSERT INTO clientes (C_CLIENTE, D_cliente, Revisar)
WITH RECURSIVE
    cod(c) AS (SELECT 1 UNION ALL SELECT c + 1 FROM cod WHERE c < 4000),
    nombres AS MATERIALIZED (SELECT key AS i, value AS v FROM json_each('["JOSE","MARIA","LUIS","CARMEN","CARLOS","ANA",
        "JUAN","ROSA","PEDRO","YOLANDA","JESUS","LUISA","MIGUEL","GABRIELA","RAFAEL","DANIELA","MANUEL",
        "ANDREINA","FRANCISCO","YELITZA","ANTONIO","MARIANA","RICARDO","CAROLINA","ALEJANDRO","VALENTINA",
        "DANIEL","ISABEL","JORGE","PATRICIA","RAMON","MILAGROS","ORLANDO","YUSMARY","NELSON","ELIZABETH",
        "EDUARDO","MARISOL","GUSTAVO","NORKA","HECTOR","ZULAY","WILMER","YOSELIN","FREDDY","KARINA",
        "ALBERTO","ROSMARY","OSCAR","LISBETH","JOSE GREGORIO","MARIA JOSE","JUAN CARLOS","ANA KARINA",
        "LUIS ALBERTO","MARIA ALEJANDRA","CARLOS EDUARDO","MARIA GABRIELA","JOSE LUIS","ANA MARIA",
        "JESUS RAFAEL","MARIA FERNANDA","JUAN PABLO","LUZ MARINA","MIGUEL ANGEL","ROSA ELENA"]')),
    apellidos AS MATERIALIZED (SELECT key AS i, value AS v FROM json_each('["RODRIGUEZ","GONZALEZ","PEREZ","HERNANDEZ",
        "GARCIA","MARTINEZ","LOPEZ","SANCHEZ","RAMIREZ","TORRES","DIAZ","ROJAS","MORENO","MENDOZA",
        "SUAREZ","CASTILLO","MEDINA","ROMERO","GUTIERREZ","RIVAS","CONTRERAS","SALAZAR","MARQUEZ",
        "BRICEÑO","FIGUERA","GUZMAN","VASQUEZ","FERNANDEZ","ACOSTA","BLANCO","CHACON","PARRA","OCHOA",
        "VILLEGAS","ZAMBRANO","QUINTERO","ALVAREZ","NUÑEZ","PEÑA","MORALES","GIL","LEON","CABRERA",
        "ARAUJO","MONTILLA","URDANETA","BRAVO","ESCALONA","MUJICA","GRATEROL","PACHECO","LINARES",
        "DUARTE","COLMENARES","INFANTE","AGUILERA","SEQUERA","ESPINOZA","VARGAS","TOVAR"]')),
    h AS (SELECT c, (c * c * 7919 + c * 2654435761 + 1013) % 2147483647 AS x FROM cod)
SELECT h.c,
       n.v || ' ' || a1.v || ' ' || a2.v,
       CASE WHEN h.c IN (137, 911, 1502, 2333, 3120, 3777) THEN '9999' ELSE '' END
FROM h
JOIN nombres n ON n.i = h.x % 66
JOIN apellidos a1 ON a1.i = (h.x / 66) % 60
-- the second surname is never the first one again
JOIN apellidos a2 ON a2.i = (a1.i + 1 + (h.x / 3960) % 59) % 60;

-- Transactions of the last 92 days, today included. Per row: the day, the
-- day's dollar (dolar) and base USDT price (base), then figures drawn from
-- hashes of the row's number. Weekdays bring 42 to 59 transfers, Saturdays
-- 30 to 41, Sundays 20 to 29; today only those of the hours gone by.
-- Older rows are nearly all paid (a few returned with C_BANCO '7777', a few
-- forgotten), yesterday's mostly, today's hardly any. A paid row carries what
-- the console's payment run writes: the bank as text ('0134'), the reference,
-- the rate (confirmacion), pago = estimate at that rate (whole bolivars below
-- service 50), ganancia = percentage left after buying those bolivars at the
-- reference price, g1 = gain in dollars, split g2/g3 with the provider by its
-- porgan on services 50 and up, the date and hour of payment and the two
-- reference prices of that day.
INSERT INTO MOVIMIENTOS
WITH RECURSIVE
    dias(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM dias WHERE n < 91),
    dia AS (
        SELECT n,
               strftime('%Y%m%d', date('now', 'localtime', '-' || n || ' days')) AS fecha,
               CAST(strftime('%w', date('now', 'localtime', '-' || n || ' days')) AS INTEGER) AS semana,
               (n * 48271 + 11) % 2147483647 AS x
        FROM dias),
    total AS (
        SELECT n, fecha,
               CASE WHEN n = 0
                    THEN max(3, CAST(cuantos * min(1.0, max(0.0, (CAST(strftime('%H', 'now', 'localtime') AS INTEGER) - 7) / 11.0)) AS INTEGER))
                    ELSE cuantos END AS cuantos
        FROM (SELECT n, fecha,
                     CASE semana WHEN 0 THEN 20 + x % 10 WHEN 6 THEN 30 + x % 12 ELSE 42 + x % 18 END AS cuantos
              FROM dia)),
    sec(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM sec WHERE k < 59),
    fila AS (
        SELECT t.n, t.fecha, s.k AS secuencia,
               ((t.n * 100 + s.k) * (t.n * 100 + s.k) * 7919 + (t.n * 100 + s.k) * 2654435761 + 97) % 2147483647 AS x
        FROM total t JOIN sec s ON s.k <= t.cuantos),
    -- independent figures between 0 and 1, one per use
    azar AS MATERIALIZED (
        SELECT n, fecha, secuencia,
               (x * 16807 % 2147483647) / 2147483647.0 AS r_serv,
               (x * 48271 % 2147483647) / 2147483647.0 AS r_monto,
               (x * 69621 % 2147483647) / 2147483647.0 AS r_cli,
               (x * 39373 % 2147483647) / 2147483647.0 AS r_estado,
               (x * 41358 % 2147483647) / 2147483647.0 AS r_prov,
               (x * 62089911 % 2147483647) / 2147483647.0 AS r_banco,
               (x * 950706376 % 2147483647) / 2147483647.0 AS r_hora,
               (x * 742938285 % 2147483647) / 2147483647.0 AS r_tasa,
               (x * 1226874159 % 2147483647) / 2147483647.0 AS r_ref,
               (x * 1343714438 % 2147483647) / 2147483647.0 AS r_oper,
               (x * 1099087573 % 2147483647) / 2147483647.0 AS r_nota,
               (x * 630360016 % 2147483647) / 2147483647.0 AS r_dia
        FROM fila),
    -- service (share of the business), amount sent in its own currency, client, state
    base1 AS (
        SELECT a.*,
               CASE WHEN r_serv < 0.30 THEN 1 WHEN r_serv < 0.55 THEN 2 WHEN r_serv < 0.65 THEN 3
                    WHEN r_serv < 0.70 THEN 4 WHEN r_serv < 0.74 THEN 5 WHEN r_serv < 0.77 THEN 6
                    WHEN r_serv < 0.79 THEN 7 WHEN r_serv < 0.87 THEN 9 WHEN r_serv < 0.94 THEN 50
                    WHEN r_serv < 0.97 THEN 55 WHEN r_serv < 0.99 THEN 56 ELSE 58 END AS servicio,
               1 + CAST(3999 * r_cli * r_cli AS INTEGER) AS cliente,
               CASE WHEN n = 0 THEN (CASE WHEN r_estado < 0.10 THEN 'P' ELSE 'N' END)
                    WHEN n = 1 THEN (CASE WHEN r_estado < 0.65 THEN 'P' WHEN r_estado < 0.67 THEN 'D' ELSE 'N' END)
                    WHEN n = 2 THEN (CASE WHEN r_estado < 0.90 THEN 'P' WHEN r_estado < 0.91 THEN 'D' ELSE 'N' END)
                    ELSE (CASE WHEN r_estado < 0.985 THEN 'P' WHEN r_estado < 0.991 THEN 'D' ELSE 'N' END) END AS estado,
               -- paid the same day, or the next one (never after today)
               CASE WHEN n > 0 AND r_dia >= 0.7 THEN n - 1 ELSE n END AS n_pago
        FROM azar a),
    base2 AS (
        SELECT b.*,
               round(365.50 / (1 + 0.0028 * n), 2) AS dolar_dia,
               round(365.50 / (1 + 0.0028 * n_pago), 2) AS dolar_pago,
               round(372.80 / (1 + 0.0028 * n), 2) AS base_dia,
               round(372.80 / (1 + 0.0028 * n_pago), 2) AS base_pago,
               CASE WHEN servicio = 55 THEN round((50000 + 1950000 * r_monto * r_monto) / 1000) * 1000
                    WHEN servicio = 56 THEN round(50 + 2950 * r_monto * r_monto)
                    WHEN servicio = 58 THEN round((5000 + 495000 * r_monto * r_monto) / 100) * 100
                    WHEN servicio = 50 THEN round(20 + 1980 * r_monto * r_monto, 2)
                    ELSE round((10 + 790 * r_monto * r_monto) / 5) * 5 END AS enviado,
               s.porcentaje, s.sw_calculos, u.compra AS compra_serv, u.div
        FROM base1 b
        JOIN servicios s ON s.C_SERVIcio = b.servicio
        LEFT JOIN servicios_usdt u ON u.equivalencia = b.servicio),
    -- what arrives in dollars, as the entry screen computes it, and the rate of
    -- the day of payment (the USDT cash price follows the base price)
    base3 AS MATERIALIZED (
        SELECT b.*,
               CASE servicio WHEN 1 THEN round(enviado * 0.946 - 0.3, 2)
                             WHEN 9 THEN round(enviado * 0.971 - 0.3, 2)
                             WHEN 55 THEN CAST(enviado / compra_serv * 100 AS INTEGER) / 100.0
                             ELSE CASE WHEN servicio < 50 THEN enviado
                                       WHEN div = 1 THEN round(enviado / compra_serv, 2)
                                       ELSE round(enviado / base_dia, 2) END END AS recibido,
               CASE WHEN servicio < 50 THEN round(dolar_pago * (100 - porcentaje) / 100 * (0.995 + r_tasa * 0.01), 2)
                    WHEN div = 1 THEN round((100 - porcentaje) / 100 * round(base_pago / compra_serv, 4), 4)
                    ELSE round((100 - porcentaje) / 100 * round(compra_serv / 372.80, 4), 4) END AS tasa,
               CASE WHEN servicio < 50 THEN round(dolar_dia * (100 - porcentaje) / 100, 2)
                    WHEN div = 1 THEN round((100 - porcentaje) / 100 * round(base_dia / compra_serv, 4), 4)
                    ELSE round((100 - porcentaje) / 100 * round(compra_serv / 372.80, 4), 4) END AS tasa_dia,
               1 + CAST(12 * r_prov AS INTEGER) AS proveedor,
               printf('%02d:%02d:%02d', 9 + CAST(r_hora * 10 AS INTEGER),
                      CAST(r_hora * 600 AS INTEGER) % 60, CAST(r_hora * 36000 AS INTEGER) % 60) AS hora
        FROM base2 b),
    -- bolivars paid: the console's estimate at the rate of payment
    base4 AS (
        SELECT b.*,
               CASE WHEN servicio IN (1, 9) THEN CAST(recibido * tasa AS INTEGER)
                    WHEN servicio < 50 THEN CAST(enviado * tasa AS INTEGER)
                    ELSE round(enviado * tasa, 2) END AS pagado
        FROM base3 b),
    -- what is left of the received dollars after buying those bolivars
    base5 AS MATERIALIZED (
        SELECT b.*,
               round(abs(1 - pagado / CASE WHEN servicio < 50 THEN dolar_pago
                                          WHEN div = 1 THEN base_pago
                                          ELSE compra_serv * base_pago / 372.80 END / recibido) * 100, 2) AS porc_gan
        FROM base4 b),
    base6 AS (
        SELECT b.*, round(recibido * (porc_gan + 0.005) / 100, 2) AS gan, p.porgan
        FROM base5 b JOIN proveedor p ON p.C_proveedor = b.proveedor)
SELECT fecha, secuencia, cliente, enviado, recibido,
       CASE estado WHEN 'P' THEN proveedor ELSE 0 END,                                  -- C_PROVEEDOR
       CASE estado WHEN 'P' THEN pagado ELSE 0 END,                                     -- pago
       CASE estado WHEN 'N' THEN '' WHEN 'D' THEN '7777'
            ELSE CASE WHEN r_banco < 0.32 THEN '0102' WHEN r_banco < 0.62 THEN '0134'
                      WHEN r_banco < 0.72 THEN '0105' WHEN r_banco < 0.80 THEN '0108'
                      WHEN r_banco < 0.86 THEN '0191' WHEN r_banco < 0.90 THEN '0172'
                      WHEN r_banco < 0.93 THEN '0114' WHEN r_banco < 0.96 THEN '0175'
                      WHEN r_banco < 0.98 THEN '0163' ELSE '0174' END END,                  -- C_BANCO
       CASE estado WHEN 'P' THEN printf('%08d', CAST(r_ref * 100000000 AS INTEGER)) ELSE '' END, -- REFERENCIA
       CASE estado WHEN 'P' THEN tasa WHEN 'D' THEN tasa_dia ELSE 0 END,                -- confirmacion
       CASE WHEN r_oper < 0.6 THEN '1' ELSE '2' END,                                    -- operadora
       CASE WHEN estado = 'P' AND CAST(r_ref * 1000000000 AS INTEGER) % 100 < 25 THEN 1
            WHEN estado = 'P' AND CAST(r_ref * 1000000000 AS INTEGER) % 100 >= 90 THEN 3 ELSE 2 END, -- tipo_operacion
       servicio,
       0, '', 0, 0, '',
       CASE estado WHEN 'P' THEN porc_gan WHEN 'D' THEN 0 ELSE 100 END,                 -- ganancia
       CASE WHEN r_nota < 0.015 THEN 'CLIENTE FRECUENTE' WHEN r_nota < 0.025 THEN 'PAGAR A TERCERO'
            WHEN r_nota < 0.035 THEN 'VERIFICAR REFERENCIA' WHEN r_nota < 0.042 THEN 'URGENTE'
            WHEN estado = 'D' THEN 'DEVOLUCION AL CLIENTE' ELSE '' END,               -- obs
       CASE estado WHEN 'P' THEN gan WHEN 'D' THEN 0 ELSE recibido END,                 -- g1
       CASE estado WHEN 'P' THEN (CASE WHEN servicio >= 50 THEN round(gan * (100 - porgan) / 100, 2) ELSE gan END)
                   WHEN 'D' THEN 0 ELSE recibido END,                                   -- g2
       CASE WHEN estado = 'P' AND servicio >= 50 THEN round(gan * porgan / 100, 2) ELSE 0 END, -- g3
       CASE estado WHEN 'P' THEN strftime('%Y%m%d', date('now', 'localtime', '-' || n_pago || ' days')) ELSE '' END,
       CASE WHEN estado <> 'P' THEN ''
            WHEN n_pago = 0 THEN min(hora, strftime('%H:%M:%S', 'now', 'localtime'))     -- never later than now
            ELSE hora END,                                                              -- hora_pago
       CASE estado WHEN 'P' THEN dolar_pago ELSE 0 END,                                 -- dolar1
       CASE estado WHEN 'P' THEN base_pago ELSE 0 END,                                  -- dolar2
       CASE WHEN servicio = 2 THEN CAST(1 + CAST(r_cli * 9000 AS INTEGER) % 9 AS TEXT) ELSE '0' END -- bancozelle
FROM base6
ORDER BY fecha, secuencia;

-- Gift balances: the commission on what each provider paid since the last
-- settlement (15 days), and the credit of its last day of payments.
WITH dias AS MATERIALIZED (
         SELECT C_PROVEEDOR AS proveedor, fecha_pago, sum(recibido) AS suma
         FROM MOVIMIENTOS WHERE C_BANCO NOT IN ('', '7777')
         GROUP BY C_PROVEEDOR, fecha_pago),
     g AS (
         SELECT d.proveedor,
                sum(CASE WHEN d.fecha_pago >= strftime('%Y%m%d', date('now', 'localtime', '-15 days'))
                         THEN d.suma ELSE 0 END) AS reciente,
                (SELECT u.suma FROM dias u WHERE u.proveedor = d.proveedor
                 ORDER BY u.fecha_pago DESC LIMIT 1) AS ultimo
         FROM dias d GROUP BY d.proveedor)
UPDATE proveedor SET regalo = round(g.reciente * proveedor.Comision / 100, 4),
                     ultregalo = round(g.ultimo * proveedor.Comision / 100, 4)
FROM g
WHERE g.proveedor = proveedor.C_proveedor;
