-- The schema of the databases the program made as it stood on 2026-11-23 (version 40d2716),
-- as the engine keeps it: the upgrade at start-up must bring them to today's.
CREATE TABLE MOVIMIENTOS (
    FECHA          TEXT    NOT NULL CHECK (length(FECHA) <= 8),
    SECUENCIA      INTEGER NOT NULL,
    C_CLIENTE      INTEGER NOT NULL DEFAULT 0,
    enviado        REAL    NOT NULL DEFAULT 0,
    recibido       REAL    NOT NULL DEFAULT 0,
    C_PROVEEDOR    INTEGER NOT NULL DEFAULT 0,
    pago           REAL    NOT NULL DEFAULT 0,
    C_BANCO        TEXT    NOT NULL DEFAULT '' CHECK (length(C_BANCO) <= 10),
    REFERENCIA     TEXT    NOT NULL DEFAULT '' CHECK (length(REFERENCIA) <= 50),
    confirmacion   REAL    NOT NULL DEFAULT 0,
    operadora      TEXT    NOT NULL DEFAULT '' CHECK (length(operadora) <= 5),
    tipo_operacion INTEGER NOT NULL DEFAULT 2,
    tipo_servicio  INTEGER NOT NULL DEFAULT 0,
    reservado1     INTEGER NOT NULL DEFAULT 0,
    reservado2     TEXT    NOT NULL DEFAULT '' CHECK (length(reservado2) <= 20),
    reservado3     INTEGER NOT NULL DEFAULT 0,
    reservado4     INTEGER NOT NULL DEFAULT 0,
    reservado5     TEXT    NOT NULL DEFAULT '' CHECK (length(reservado5) <= 20),
    ganancia       REAL    NOT NULL DEFAULT 100,
    obs            TEXT    NOT NULL DEFAULT '' CHECK (length(obs) <= 500),
    g1             REAL    NOT NULL DEFAULT 0,
    g2             REAL    NOT NULL DEFAULT 0,
    g3             REAL    NOT NULL DEFAULT 0,
    fecha_pago     TEXT    NOT NULL DEFAULT '' CHECK (length(fecha_pago) <= 8),
    hora_pago      TEXT    NOT NULL DEFAULT '' CHECK (length(hora_pago) <= 8),
    dolar1         REAL    NOT NULL DEFAULT 0,
    dolar2         REAL    NOT NULL DEFAULT 0,
    bancozelle     TEXT    NOT NULL DEFAULT '' CHECK (length(bancozelle) <= 5),
    PRIMARY KEY (FECHA, SECUENCIA)
) STRICT;
CREATE INDEX movimientos_fecha_pago ON MOVIMIENTOS (fecha_pago);
CREATE INDEX movimientos_cliente ON MOVIMIENTOS (C_CLIENTE, FECHA);
CREATE INDEX movimientos_proveedor ON MOVIMIENTOS (C_PROVEEDOR, FECHA);
CREATE TABLE bancos (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT '' CHECK (length(D_banco) <= 60)
) STRICT;
CREATE TABLE bancos_zelle (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT '' CHECK (length(D_banco) <= 60)
) STRICT;
CREATE TABLE clientes (
    C_CLIENTE INTEGER PRIMARY KEY,
    D_cliente TEXT NOT NULL DEFAULT '' CHECK (length(D_cliente) <= 60),
    Revisar   TEXT NOT NULL DEFAULT '' CHECK (length(Revisar) <= 10)
) STRICT;
CREATE INDEX clientes_nombre ON clientes (D_cliente COLLATE NOCASE);
CREATE TABLE fotos (
    cliente INTEGER PRIMARY KEY,
    img     BLOB NOT NULL
) STRICT;
CREATE TABLE proveedor (
    C_proveedor INTEGER PRIMARY KEY,
    D_proveedor TEXT    NOT NULL DEFAULT '' CHECK (length(D_proveedor) <= 60),
    clave_pro   TEXT    NOT NULL DEFAULT '' CHECK (length(clave_pro) <= 10),
    porgan      REAL    NOT NULL DEFAULT 0,
    Comision    REAL    NOT NULL DEFAULT 0,
    regalo      REAL    NOT NULL DEFAULT 0,
    ultregalo   REAL    NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE conceptos (
    C_CONCEPTO INTEGER PRIMARY KEY,
    D_CONCEPTO TEXT NOT NULL DEFAULT '' CHECK (length(D_CONCEPTO) <= 100)
) STRICT;
CREATE TABLE servicios (
    C_SERVIcio  INTEGER PRIMARY KEY,
    D_SERVIcio  TEXT    NOT NULL DEFAULT '' CHECK (length(D_SERVIcio) <= 60),
    porcentaje  REAL    NOT NULL DEFAULT 0,
    decimales   INTEGER NOT NULL DEFAULT 2,
    sw_calculos INTEGER NOT NULL DEFAULT 1,
    letra       TEXT    NOT NULL DEFAULT '' CHECK (length(letra) <= 1),
    St_servicio TEXT    NOT NULL DEFAULT 'A' CHECK (length(St_servicio) <= 10),
    MONTO       REAL    NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE servicios_usdt (
    C_SERVIcio   INTEGER PRIMARY KEY,
    D_SERVIcio   TEXT    NOT NULL DEFAULT '' CHECK (length(D_SERVIcio) <= 60),
    compra       REAL    NOT NULL DEFAULT 0,
    venta        REAL    NOT NULL DEFAULT 0,
    equivalencia INTEGER NOT NULL DEFAULT 0,
    div          INTEGER NOT NULL DEFAULT 0
) STRICT;
CREATE TABLE parametros (
    Clave              TEXT NOT NULL DEFAULT '' CHECK (length(Clave) <= 20),
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
    Nombre           TEXT    NOT NULL DEFAULT '' CHECK (length(Nombre) <= 60),
    titulo           TEXT    NOT NULL DEFAULT '' CHECK (length(titulo) <= 100),
    mensaje          TEXT    NOT NULL DEFAULT '' CHECK (length(mensaje) <= 500),
    Fecha            TEXT    NOT NULL DEFAULT '',
    tipo             TEXT    NOT NULL DEFAULT '' CHECK (length(tipo) <= 30),
    leida            TEXT    NOT NULL DEFAULT 'NO' CHECK (length(leida) <= 5)
) STRICT;
