-- The schema of the databases the program made as it stood on 2026-11-23 (version afbd3eb),
-- as the engine keeps it: the upgrade at start-up must bring them to today's.
CREATE TABLE MOVIMIENTOS (
    FECHA          TEXT    NOT NULL,
    SECUENCIA      INTEGER NOT NULL,
    C_CLIENTE      INTEGER NOT NULL DEFAULT 0,
    enviado        REAL    NOT NULL DEFAULT 0,
    recibido       REAL    NOT NULL DEFAULT 0,
    C_PROVEEDOR    INTEGER NOT NULL DEFAULT 0,
    pago           REAL    NOT NULL DEFAULT 0,
    C_BANCO        TEXT    NOT NULL DEFAULT '',
    REFERENCIA     TEXT    NOT NULL DEFAULT '',
    confirmacion   REAL    NOT NULL DEFAULT 0,
    operadora      TEXT    NOT NULL DEFAULT '',
    tipo_operacion INTEGER NOT NULL DEFAULT 2,
    tipo_servicio  INTEGER NOT NULL DEFAULT 0,
    reservado1     INTEGER NOT NULL DEFAULT 0,
    reservado2     TEXT    NOT NULL DEFAULT '',
    reservado3     INTEGER NOT NULL DEFAULT 0,
    reservado4     INTEGER NOT NULL DEFAULT 0,
    reservado5     TEXT    NOT NULL DEFAULT '',
    ganancia       REAL    NOT NULL DEFAULT 100,
    obs            TEXT    NOT NULL DEFAULT '',
    g1             REAL    NOT NULL DEFAULT 0,
    g2             REAL    NOT NULL DEFAULT 0,
    g3             REAL    NOT NULL DEFAULT 0,
    fecha_pago     TEXT    NOT NULL DEFAULT '',
    hora_pago      TEXT    NOT NULL DEFAULT '',
    dolar1         REAL    NOT NULL DEFAULT 0,
    dolar2         REAL    NOT NULL DEFAULT 0,
    bancozelle     TEXT    NOT NULL DEFAULT '',
    PRIMARY KEY (FECHA, SECUENCIA)
) STRICT;
CREATE INDEX movimientos_fecha_pago ON MOVIMIENTOS (fecha_pago);
CREATE INDEX movimientos_estadistica ON MOVIMIENTOS
    (FECHA, C_BANCO, operadora, tipo_servicio, tipo_operacion, recibido, enviado, g2);
CREATE INDEX movimientos_cliente ON MOVIMIENTOS
    (C_CLIENTE, FECHA, C_BANCO, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX movimientos_proveedor ON MOVIMIENTOS
    (C_PROVEEDOR, FECHA, C_BANCO, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX movimientos_banco ON MOVIMIENTOS (C_BANCO, FECHA, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX movimientos_servicio ON MOVIMIENTOS (tipo_servicio, FECHA, C_BANCO, operadora, recibido, enviado);
CREATE TABLE bancos (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT ''
) STRICT;
CREATE TABLE bancos_zelle (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT ''
) STRICT;
CREATE TABLE clientes (
    C_CLIENTE INTEGER PRIMARY KEY,
    D_cliente TEXT NOT NULL DEFAULT '',
    Revisar   TEXT NOT NULL DEFAULT ''
) STRICT;
CREATE INDEX clientes_nombre ON clientes (D_cliente COLLATE NOCASE);
CREATE TABLE fotos (
    cliente INTEGER PRIMARY KEY,
    img     BLOB NOT NULL
) STRICT;
CREATE TABLE proveedor (
    C_proveedor INTEGER PRIMARY KEY,
    D_proveedor TEXT    NOT NULL DEFAULT '',
    clave_pro   TEXT    NOT NULL DEFAULT '',
    porgan      REAL    NOT NULL DEFAULT 0,
    Comision    REAL    NOT NULL DEFAULT 0,
    regalo      REAL    NOT NULL DEFAULT 0,
    ultregalo   REAL    NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE conceptos (
    C_CONCEPTO INTEGER PRIMARY KEY,
    D_CONCEPTO TEXT NOT NULL DEFAULT ''
) STRICT;
CREATE TABLE servicios (
    C_SERVIcio  INTEGER PRIMARY KEY,
    D_SERVIcio  TEXT    NOT NULL DEFAULT '',
    porcentaje  REAL    NOT NULL DEFAULT 0,
    decimales   INTEGER NOT NULL DEFAULT 2,
    sw_calculos INTEGER NOT NULL DEFAULT 1,
    letra       TEXT    NOT NULL DEFAULT '' CHECK (length(letra) <= 1),
    St_servicio TEXT    NOT NULL DEFAULT 'A',
    MONTO       REAL    NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE servicios_usdt (
    C_SERVIcio   INTEGER PRIMARY KEY,
    D_SERVIcio   TEXT    NOT NULL DEFAULT '',
    compra       REAL    NOT NULL DEFAULT 0,
    venta        REAL    NOT NULL DEFAULT 0,
    equivalencia INTEGER NOT NULL DEFAULT 0,
    div          INTEGER NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE parametros (
    Clave              TEXT NOT NULL DEFAULT '',
    Fecha              TEXT NOT NULL DEFAULT '',
    Fecha_Compraventas TEXT NOT NULL DEFAULT '',
    Dolar              REAL NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE dolar (
    Fecha TEXT NOT NULL DEFAULT '',
    valor REAL NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE dolar_NEW (
    Fecha  TEXT NOT NULL DEFAULT '',
    TRUMIN REAL NOT NULL DEFAULT 0,
    ZELLE  REAL NOT NULL DEFAULT 0,
    ZINLI  REAL NOT NULL DEFAULT 0,
    AMAZON REAL NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE notificaciones (
    Codigo_proveedor INTEGER NOT NULL DEFAULT 0,
    Nombre           TEXT    NOT NULL DEFAULT '',
    titulo           TEXT    NOT NULL DEFAULT '',
    mensaje          TEXT    NOT NULL DEFAULT '',
    Fecha            TEXT    NOT NULL DEFAULT '',
    tipo             TEXT    NOT NULL DEFAULT '',
    leida            TEXT    NOT NULL DEFAULT 'NO'
) STRICT;
