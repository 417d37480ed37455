-- Tables of the Control de Pagos database (embedded server, SQLite).
--
-- Every table is STRICT: a value that does not fit its column is refused
-- instead of being stored as something else. Codes of clients, providers,
-- banks, concepts and services are INTEGER, so that the padded text the
-- screens send ('0012') and the bare number (12) find the same row.
-- Amounts and rates are REAL (the screens work with doubles). Dates of a
-- transaction are 8-digit text yyyymmdd, as the screens send and compare
-- them; moments (last update of the rates, notifications) are text
-- 'yyyy-mm-dd hh:mm:ss', the form GETDATE() gives, which sorts as it reads;
-- only dolar and dolar_NEW, whose Fecha the screens show raw, keep it as
-- the screen shows it, 'dd/mm/yyyy hh:mm:ss'.
--
-- A text column with CHECK (length(x) <= N) is varchar(N) on SQL Server, and
-- refuses a longer text here as SQL Server does; a text column without one
-- is varchar(max). The procedures cut names to their parameters' lengths, and
-- the screens' fields take no more than their columns hold.
--
-- Everything here is made only when missing: a database file made by an
-- older version of the program is brought up to date by running this again
-- (the server does it when it opens such a file), and its rows stay.

-- One transfer: a client sends dollars through a service; a provider later pays
-- the bolivars through a bank. The entry screen inserts the 28 values by
-- position, so the order of the columns is fixed and no column may be added.
CREATE TABLE IF NOT EXISTS MOVIMIENTOS (
    FECHA          TEXT    NOT NULL CHECK (length(FECHA) <= 8),  -- yyyymmdd of the transaction
    SECUENCIA      INTEGER NOT NULL,               -- 1..n within the date
    C_CLIENTE      INTEGER NOT NULL DEFAULT 0,
    enviado        REAL    NOT NULL DEFAULT 0,     -- dollars (or the service's currency) sent
    recibido       REAL    NOT NULL DEFAULT 0,     -- dollars that arrive after the service's cut
    C_PROVEEDOR    INTEGER NOT NULL DEFAULT 0,     -- 0: no provider yet
    pago           REAL    NOT NULL DEFAULT 0,     -- bolivars paid
    C_BANCO        TEXT    NOT NULL DEFAULT '' CHECK (length(C_BANCO) <= 10),  -- '' unpaid, '7777' returned, else the paying bank's code
    REFERENCIA     TEXT    NOT NULL DEFAULT '' CHECK (length(REFERENCIA) <= 50),
    confirmacion   REAL    NOT NULL DEFAULT 0,     -- rate at which the row was paid
    operadora      TEXT    NOT NULL DEFAULT '' CHECK (length(operadora) <= 5),  -- '1' or '2'
    tipo_operacion INTEGER NOT NULL DEFAULT 2,     -- 1 pago movil, 2 transferencia, 3 transferencia directa
    tipo_servicio  INTEGER NOT NULL DEFAULT 0,     -- code of servicios
    reservado1     INTEGER NOT NULL DEFAULT 0,     -- the five reserved places keep the positional shape
    reservado2     TEXT    NOT NULL DEFAULT '' CHECK (length(reservado2) <= 20),
    reservado3     INTEGER NOT NULL DEFAULT 0,
    reservado4     INTEGER NOT NULL DEFAULT 0,
    reservado5     TEXT    NOT NULL DEFAULT '' CHECK (length(reservado5) <= 20),
    ganancia       REAL    NOT NULL DEFAULT 100,   -- percentage of gain; 100 while unpaid
    obs            TEXT    NOT NULL DEFAULT '' CHECK (length(obs) <= 500),
    g1             REAL    NOT NULL DEFAULT 0,     -- gain in dollars, whole
    g2             REAL    NOT NULL DEFAULT 0,     -- the business's part
    g3             REAL    NOT NULL DEFAULT 0,     -- the provider's part
    fecha_pago     TEXT    NOT NULL DEFAULT '' CHECK (length(fecha_pago) <= 8),  -- yyyymmdd of the payment, '' while unpaid
    hora_pago      TEXT    NOT NULL DEFAULT '' CHECK (length(hora_pago) <= 8),  -- hh:mm:ss of the payment
    dolar1         REAL    NOT NULL DEFAULT 0,     -- reference dollar at the payment
    dolar2         REAL    NOT NULL DEFAULT 0,     -- base USDT price at the payment
    bancozelle     TEXT    NOT NULL DEFAULT '' CHECK (length(bancozelle) <= 5),  -- one-character code of the Zelle bank
    PRIMARY KEY (FECHA, SECUENCIA)
) STRICT;
-- The console by date of payment.
CREATE INDEX IF NOT EXISTS movimientos_fecha_pago ON MOVIMIENTOS (fecha_pago);
-- The client's history, the provider's rows, and the statistics. Each
-- statistics grouping walks one of these indexes alone, never the table: the
-- rows of a period by date (the days), or the codes one by one with each
-- code's rows of the period (clients, providers, banks, services), so that a
-- month or a year is added up without sorting its rows. They carry every
-- column that the groupings filter on or add up.
CREATE INDEX IF NOT EXISTS movimientos_estadistica ON MOVIMIENTOS
    (FECHA, C_BANCO, operadora, tipo_servicio, tipo_operacion, recibido, enviado, g2);
CREATE INDEX IF NOT EXISTS movimientos_cliente ON MOVIMIENTOS
    (C_CLIENTE, FECHA, C_BANCO, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX IF NOT EXISTS movimientos_proveedor ON MOVIMIENTOS
    (C_PROVEEDOR, FECHA, C_BANCO, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX IF NOT EXISTS movimientos_banco ON MOVIMIENTOS (C_BANCO, FECHA, operadora, tipo_servicio, recibido, enviado);
CREATE INDEX IF NOT EXISTS movimientos_servicio ON MOVIMIENTOS (tipo_servicio, FECHA, C_BANCO, operadora, recibido, enviado);
-- The direct transfers (type of operation 3), a tenth of the rows or so, by
-- date: the "Directos" of the statistics read them alone.
CREATE INDEX IF NOT EXISTS movimientos_directos ON MOVIMIENTOS
    (tipo_operacion, FECHA, C_BANCO, operadora, tipo_servicio, recibido, enviado) WHERE tipo_operacion = 3;

-- Venezuelan banks through which the bolivars are paid, by their 4-digit code.
CREATE TABLE IF NOT EXISTS bancos (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT '' CHECK (length(D_banco) <= 60)
) STRICT;

-- Banks in the United States that receive the Zelle transfers. The client keeps
-- them by code 0 to 10 (a larger code stops its load) and the transaction
-- stores one character of it.
CREATE TABLE IF NOT EXISTS bancos_zelle (
    C_Banco INTEGER PRIMARY KEY,
    D_banco TEXT NOT NULL DEFAULT '' CHECK (length(D_banco) <= 60)
) STRICT;

-- Clients; Revisar '9999' marks a client under review (warning picture on entry).
CREATE TABLE IF NOT EXISTS clientes (
    C_CLIENTE INTEGER PRIMARY KEY,
    D_cliente TEXT NOT NULL DEFAULT '' CHECK (length(D_cliente) <= 60),
    Revisar   TEXT NOT NULL DEFAULT '' CHECK (length(Revisar) <= 10)
) STRICT;
CREATE INDEX IF NOT EXISTS clientes_nombre ON clientes (D_cliente COLLATE NOCASE);

-- Client photos; row 0 is the picture of a client without photo, row 9999 the
-- warning of a client under review. Both must exist.
CREATE TABLE IF NOT EXISTS fotos (
    cliente INTEGER PRIMARY KEY,
    img     BLOB NOT NULL
) STRICT;

-- Providers who pay the bolivars. porgan: their percentage of the gain on
-- USDT services; Comision: percentage of the received dollars credited to
-- their gift balance regalo at each payment run, ultregalo the last credit.
CREATE TABLE IF NOT EXISTS proveedor (
    C_proveedor INTEGER PRIMARY KEY,
    D_proveedor TEXT    NOT NULL DEFAULT '' CHECK (length(D_proveedor) <= 60),
    clave_pro   TEXT    NOT NULL DEFAULT '' CHECK (length(clave_pro) <= 10),
    porgan      REAL    NOT NULL DEFAULT 0,    -- the client keeps its whole part
    Comision    REAL    NOT NULL DEFAULT 0,
    regalo      REAL    NOT NULL DEFAULT 0,
    ultregalo   REAL    NOT NULL DEFAULT 0
) STRICT;

-- Payment concepts printed on the receipts.
CREATE TABLE IF NOT EXISTS conceptos (
    C_CONCEPTO INTEGER PRIMARY KEY,
    D_CONCEPTO TEXT NOT NULL DEFAULT '' CHECK (length(D_CONCEPTO) <= 100)
) STRICT;

-- Services through which clients send money. The client keeps them by code
-- 0 to 100: a larger code stops its load, so the procedures that give new
-- codes stay within that range; the table itself does not refuse one. sw_calculos 1: priced from the day's dollar, MONTO = dollar *
-- (100 - porcentaje) / 100 cut to decimales; 2: priced from a USDT price
-- (servicios_usdt). letra is the key typed on the entry screen; its
-- uniqueness is checked by the client. St_servicio is a free status text.
CREATE TABLE IF NOT EXISTS servicios (
    C_SERVIcio  INTEGER PRIMARY KEY,
    D_SERVIcio  TEXT    NOT NULL DEFAULT '' CHECK (length(D_SERVIcio) <= 60),
    porcentaje  REAL    NOT NULL DEFAULT 0,
    decimales   INTEGER NOT NULL DEFAULT 2,
    sw_calculos INTEGER NOT NULL DEFAULT 1,
    letra       TEXT    NOT NULL DEFAULT '' CHECK (length(letra) <= 1),
    St_servicio TEXT    NOT NULL DEFAULT 'A' CHECK (length(St_servicio) <= 10),
    MONTO       REAL    NOT NULL DEFAULT 0        -- bolivars per unit sent, the service's rate of the day
) STRICT;

-- USDT prices. Row 1 carries the reference dollar, row 2 the base USDT price,
-- both with equivalencia 0. Further rows price the service named by
-- equivalencia (50 and up): div 1, MONTO from base / compra; div 2, from
-- compra / base. The client indexes them, and the equivalences, 0 to 100 as well.
CREATE TABLE IF NOT EXISTS servicios_usdt (
    C_SERVIcio   INTEGER PRIMARY KEY,
    D_SERVIcio   TEXT    NOT NULL DEFAULT '' CHECK (length(D_SERVIcio) <= 60),
    compra       REAL    NOT NULL DEFAULT 0,
    venta        REAL    NOT NULL DEFAULT 0,
    equivalencia INTEGER NOT NULL DEFAULT 0,
    div          INTEGER NOT NULL DEFAULT 0
) STRICT;

-- The business's parameters: one row, read by TRU_PARAMETROS.
CREATE TABLE IF NOT EXISTS parametros (
    Clave              TEXT NOT NULL DEFAULT '' CHECK (length(Clave) <= 20),  -- access code of the program
    Fecha              TEXT NOT NULL DEFAULT '',   -- last store of the service rates
    Fecha_Compraventas TEXT NOT NULL DEFAULT '',   -- last store of the USDT prices
    Dolar              REAL NOT NULL DEFAULT 0     -- the day's dollar
) STRICT;

-- The plain dollar screens: the current price, one row each; Fecha as
-- 'dd/mm/yyyy hh:mm:ss', shown by those screens as it stands.
CREATE TABLE IF NOT EXISTS dolar (
    Fecha TEXT NOT NULL DEFAULT '',
    valor REAL NOT NULL DEFAULT 0
) STRICT;

CREATE TABLE IF NOT EXISTS dolar_NEW (
    Fecha  TEXT NOT NULL DEFAULT '',
    TRUMIN REAL NOT NULL DEFAULT 0,
    ZELLE  REAL NOT NULL DEFAULT 0,
    ZINLI  REAL NOT NULL DEFAULT 0,
    AMAZON REAL NOT NULL DEFAULT 0
) STRICT;

-- Messages about providers shown on the rate panel.
CREATE TABLE IF NOT EXISTS notificaciones (
    Codigo_proveedor INTEGER NOT NULL DEFAULT 0,
    Nombre           TEXT    NOT NULL DEFAULT '' CHECK (length(Nombre) <= 60),
    titulo           TEXT    NOT NULL DEFAULT '' CHECK (length(titulo) <= 100),
    mensaje          TEXT    NOT NULL DEFAULT '' CHECK (length(mensaje) <= 500),
    Fecha            TEXT    NOT NULL DEFAULT '',
    tipo             TEXT    NOT NULL DEFAULT '' CHECK (length(tipo) <= 30),
    leida            TEXT    NOT NULL DEFAULT 'NO' CHECK (length(leida) <= 5)
) STRICT;

-- The version of each transaction, so that a console's save never writes over
-- a row that another operator changed, or deleted and entered again, after the
-- console loaded it. MOVIMIENTOS takes no column of its own for it (see
-- above): the version stands beside it, by the same key. Every insert and
-- update of a transaction gives the row the next value of the counter, which
-- only grows, so a new row entered under a deleted row's key never carries a
-- version that row had. A row without a version row here (stored before the
-- versions existed) is version 0. The triggers keep both tables.
CREATE TABLE IF NOT EXISTS MOVIMIENTOS_VERSION (
    FECHA     TEXT    NOT NULL CHECK (length(FECHA) <= 8),
    SECUENCIA INTEGER NOT NULL,
    version   INTEGER NOT NULL,
    PRIMARY KEY (FECHA, SECUENCIA)
) STRICT, WITHOUT ROWID;
-- One row: the last version given.
CREATE TABLE IF NOT EXISTS MOVIMIENTOS_CONTADOR (
    ultima INTEGER NOT NULL DEFAULT 0
) STRICT;
INSERT INTO MOVIMIENTOS_CONTADOR (ultima) SELECT 0 WHERE NOT EXISTS (SELECT 1 FROM MOVIMIENTOS_CONTADOR);
CREATE TRIGGER IF NOT EXISTS movimientos_version_alta AFTER INSERT ON MOVIMIENTOS
BEGIN
    UPDATE MOVIMIENTOS_CONTADOR SET ultima = ultima + 1;
    INSERT OR REPLACE INTO MOVIMIENTOS_VERSION (FECHA, SECUENCIA, version)
        VALUES (NEW.FECHA, NEW.SECUENCIA, (SELECT ultima FROM MOVIMIENTOS_CONTADOR));
END;
-- An update that changes the key moves the version row to the new key.
CREATE TRIGGER IF NOT EXISTS movimientos_version_cambio AFTER UPDATE ON MOVIMIENTOS
BEGIN
    DELETE FROM MOVIMIENTOS_VERSION WHERE FECHA = OLD.FECHA AND SECUENCIA = OLD.SECUENCIA;
    UPDATE MOVIMIENTOS_CONTADOR SET ultima = ultima + 1;
    INSERT OR REPLACE INTO MOVIMIENTOS_VERSION (FECHA, SECUENCIA, version)
        VALUES (NEW.FECHA, NEW.SECUENCIA, (SELECT ultima FROM MOVIMIENTOS_CONTADOR));
END;
CREATE TRIGGER IF NOT EXISTS movimientos_version_baja AFTER DELETE ON MOVIMIENTOS
BEGIN
    DELETE FROM MOVIMIENTOS_VERSION WHERE FECHA = OLD.FECHA AND SECUENCIA = OLD.SECUENCIA;
END;

-- The version of this schema: raised with every change of this file. At start
-- the program brings a database of an older version up to it (a table whose
-- text changed is made anew with its rows), and refuses one of a newer version.
PRAGMA user_version = 1;
