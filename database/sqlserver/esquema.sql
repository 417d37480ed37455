-- Control de Pagos: the database RAMIL on SQL Server, its tables and indexes.
-- What exists is kept: a table is created only when missing, an index only
-- when missing or older than the program's.
--
-- Types: codes are int, so that the padded text the screens send ('0012')
-- converts to the same key as 12. Amounts and rates are float: the screens
-- work with doubles, and the console may send an empty text for an amount,
-- which SQL Server turns into 0 for float and int (and refuses for decimal).
-- Transaction dates are varchar(8) yyyymmdd, compared as text as the client
-- sends them; moments (last update of rates, notifications) are datetime.

IF DB_ID(N'RAMIL') IS NULL
    CREATE DATABASE RAMIL COLLATE Modern_Spanish_CI_AS;
go
USE RAMIL;
go
SET NOCOUNT ON;
go

-- One transfer. The entry screen inserts 28 values by position: the order of
-- the columns is fixed and no column may be added.
IF OBJECT_ID(N'dbo.MOVIMIENTOS', N'U') IS NULL
    CREATE TABLE dbo.MOVIMIENTOS (
        FECHA          varchar(8)   NOT NULL,
        SECUENCIA      int          NOT NULL,
        C_CLIENTE      int          NOT NULL DEFAULT 0,
        enviado        float        NOT NULL DEFAULT 0,
        recibido       float        NOT NULL DEFAULT 0,
        C_PROVEEDOR    int          NOT NULL DEFAULT 0,
        pago           float        NOT NULL DEFAULT 0,
        C_BANCO        varchar(10)  NOT NULL DEFAULT '',   -- '' unpaid, '7777' returned, else the paying bank
        REFERENCIA     varchar(50)  NOT NULL DEFAULT '',
        confirmacion   float        NOT NULL DEFAULT 0,
        operadora      varchar(5)   NOT NULL DEFAULT '',
        tipo_operacion int          NOT NULL DEFAULT 2,
        tipo_servicio  int          NOT NULL DEFAULT 0,
        reservado1     int          NOT NULL DEFAULT 0,
        reservado2     varchar(20)  NOT NULL DEFAULT '',
        reservado3     int          NOT NULL DEFAULT 0,
        reservado4     int          NOT NULL DEFAULT 0,
        reservado5     varchar(20)  NOT NULL DEFAULT '',
        ganancia       float        NOT NULL DEFAULT 100,
        obs            varchar(500) NOT NULL DEFAULT '',
        g1             float        NOT NULL DEFAULT 0,
        g2             float        NOT NULL DEFAULT 0,
        g3             float        NOT NULL DEFAULT 0,
        fecha_pago     varchar(8)   NOT NULL DEFAULT '',
        hora_pago      varchar(8)   NOT NULL DEFAULT '',
        dolar1         float        NOT NULL DEFAULT 0,
        dolar2         float        NOT NULL DEFAULT 0,
        bancozelle     varchar(5)   NOT NULL DEFAULT '',
        CONSTRAINT PK_MOVIMIENTOS PRIMARY KEY (FECHA, SECUENCIA)
    );
IF OBJECT_ID(N'dbo.bancos', N'U') IS NULL
    CREATE TABLE dbo.bancos (
        C_Banco int NOT NULL PRIMARY KEY,
        D_banco varchar(60) NOT NULL DEFAULT ''
    );
-- Zelle banks: the program keeps them by code 0 to 10.
IF OBJECT_ID(N'dbo.bancos_zelle', N'U') IS NULL
    CREATE TABLE dbo.bancos_zelle (
        C_Banco int NOT NULL PRIMARY KEY,
        D_banco varchar(60) NOT NULL DEFAULT ''
    );
-- Revisar '9999': a client under review.
IF OBJECT_ID(N'dbo.clientes', N'U') IS NULL
    CREATE TABLE dbo.clientes (
        C_CLIENTE int NOT NULL PRIMARY KEY,
        D_cliente varchar(60) NOT NULL DEFAULT '',
        Revisar   varchar(10) NOT NULL DEFAULT ''
    );
-- Row 0: picture of a client without photo; row 9999: client under review.
IF OBJECT_ID(N'dbo.fotos', N'U') IS NULL
    CREATE TABLE dbo.fotos (
        cliente int NOT NULL PRIMARY KEY,
        img     varbinary(max) NOT NULL
    );
IF OBJECT_ID(N'dbo.proveedor', N'U') IS NULL
    CREATE TABLE dbo.proveedor (
        C_proveedor int NOT NULL PRIMARY KEY,
        D_proveedor varchar(60) NOT NULL DEFAULT '',
        clave_pro   varchar(10) NOT NULL DEFAULT '',
        porgan      float NOT NULL DEFAULT 0,
        Comision    float NOT NULL DEFAULT 0,
        regalo      float NOT NULL DEFAULT 0,
        ultregalo   float NOT NULL DEFAULT 0
    );
IF OBJECT_ID(N'dbo.conceptos', N'U') IS NULL
    CREATE TABLE dbo.conceptos (
        C_CONCEPTO int NOT NULL PRIMARY KEY,
        D_CONCEPTO varchar(100) NOT NULL DEFAULT ''
    );
-- Services, by code 0 to 100; sw_calculos 1 priced from the dollar, 2 from USDT.
IF OBJECT_ID(N'dbo.servicios', N'U') IS NULL
    CREATE TABLE dbo.servicios (
        C_SERVIcio  int NOT NULL PRIMARY KEY,
        D_SERVIcio  varchar(60) NOT NULL DEFAULT '',
        porcentaje  float NOT NULL DEFAULT 0,
        decimales   int NOT NULL DEFAULT 2,
        sw_calculos int NOT NULL DEFAULT 1,
        letra       varchar(1) NOT NULL DEFAULT '',
        St_servicio varchar(10) NOT NULL DEFAULT 'A',
        MONTO       float NOT NULL DEFAULT 0
    );
-- USDT prices: row 1 the reference dollar, row 2 the base USDT price; the
-- others price the service named by equivalencia (div 1 or 2).
IF OBJECT_ID(N'dbo.servicios_usdt', N'U') IS NULL
    CREATE TABLE dbo.servicios_usdt (
        C_SERVIcio   int NOT NULL PRIMARY KEY,
        D_SERVIcio   varchar(60) NOT NULL DEFAULT '',
        compra       float NOT NULL DEFAULT 0,
        venta        float NOT NULL DEFAULT 0,
        equivalencia int NOT NULL DEFAULT 0,
        div          int NOT NULL DEFAULT 0
    );
IF OBJECT_ID(N'dbo.parametros', N'U') IS NULL
    CREATE TABLE dbo.parametros (
        Clave              varchar(20) NOT NULL DEFAULT '',
        Fecha              datetime NULL,
        Fecha_Compraventas datetime NULL,
        Dolar              float NOT NULL DEFAULT 0
    );
IF OBJECT_ID(N'dbo.dolar', N'U') IS NULL
    CREATE TABLE dbo.dolar (
        Fecha datetime NOT NULL DEFAULT GETDATE(),
        valor float NOT NULL DEFAULT 0
    );
IF OBJECT_ID(N'dbo.dolar_NEW', N'U') IS NULL
    CREATE TABLE dbo.dolar_NEW (
        Fecha  datetime NOT NULL DEFAULT GETDATE(),
        TRUMIN float NOT NULL DEFAULT 0,
        ZELLE  float NOT NULL DEFAULT 0,
        ZINLI  float NOT NULL DEFAULT 0,
        AMAZON float NOT NULL DEFAULT 0
    );
IF OBJECT_ID(N'dbo.notificaciones', N'U') IS NULL
    CREATE TABLE dbo.notificaciones (
        Codigo_proveedor int NOT NULL DEFAULT 0,
        Nombre           varchar(60) NOT NULL DEFAULT '',
        titulo           varchar(100) NOT NULL DEFAULT '',
        mensaje          varchar(500) NOT NULL DEFAULT '',
        Fecha            datetime NOT NULL DEFAULT GETDATE(),
        tipo             varchar(30) NOT NULL DEFAULT '',
        leida            varchar(5) NOT NULL DEFAULT 'NO'
    );
-- The version of each transaction, beside it by its key (MOVIMIENTOS takes no
-- column of its own): a console's save of a row that changed, or was deleted
-- and entered again, after the console loaded it is refused. The trigger
-- TRU_MOVIMIENTOS_Version gives every inserted or updated row the next value
-- of the counter, which only grows. Rows stored before the versions existed
-- have no version row and are version 0.
IF OBJECT_ID(N'dbo.MOVIMIENTOS_VERSION', N'U') IS NULL
    CREATE TABLE dbo.MOVIMIENTOS_VERSION (
        FECHA     varchar(8) NOT NULL,
        SECUENCIA int        NOT NULL,
        version   bigint     NOT NULL,
        CONSTRAINT PK_MOVIMIENTOS_VERSION PRIMARY KEY (FECHA, SECUENCIA)
    );
-- One row (datos.sql): the last version given.
IF OBJECT_ID(N'dbo.MOVIMIENTOS_CONTADOR', N'U') IS NULL
    CREATE TABLE dbo.MOVIMIENTOS_CONTADOR (
        ultima bigint NOT NULL DEFAULT 0
    );
go

-- The indexes. An index exists when sys.indexes names it; a server that keeps
-- a longer name of its own there (the name, then the table's and a hash) is
-- matched by its beginning, and no index name here begins with another's.
-- The rows that the statistics read walk the indexes by date, client,
-- provider, bank, service and type of operation alone: the columns they
-- filter on or add up are carried in them. The indexes by client and by
-- provider of older databases, made without those columns, are made again.
IF EXISTS (SELECT 1 FROM sys.indexes AS i
           WHERE i.object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND i.name LIKE N'movimientos[_]cliente%'
             AND NOT EXISTS (SELECT 1 FROM sys.index_columns AS c
                             WHERE c.object_id = i.object_id AND c.index_id = i.index_id AND c.is_included_column = 1))
    DROP INDEX movimientos_cliente ON dbo.MOVIMIENTOS;
IF EXISTS (SELECT 1 FROM sys.indexes AS i
           WHERE i.object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND i.name LIKE N'movimientos[_]proveedor%'
             AND NOT EXISTS (SELECT 1 FROM sys.index_columns AS c
                             WHERE c.object_id = i.object_id AND c.index_id = i.index_id AND c.is_included_column = 1))
    DROP INDEX movimientos_proveedor ON dbo.MOVIMIENTOS;

IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.clientes') AND name LIKE N'clientes[_]nombre%')
    CREATE INDEX clientes_nombre ON dbo.clientes (D_cliente);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]fecha[_]pago%')
    CREATE INDEX movimientos_fecha_pago ON dbo.MOVIMIENTOS (fecha_pago);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]estadistica%')
    CREATE INDEX movimientos_estadistica ON dbo.MOVIMIENTOS (FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, tipo_operacion, recibido, enviado, g2);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]cliente%')
    CREATE INDEX movimientos_cliente ON dbo.MOVIMIENTOS (C_CLIENTE, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]proveedor%')
    CREATE INDEX movimientos_proveedor ON dbo.MOVIMIENTOS (C_PROVEEDOR, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]banco%')
    CREATE INDEX movimientos_banco ON dbo.MOVIMIENTOS (C_BANCO, FECHA)
        INCLUDE (operadora, tipo_servicio, recibido, enviado);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]servicio%')
    CREATE INDEX movimientos_servicio ON dbo.MOVIMIENTOS (tipo_servicio, FECHA)
        INCLUDE (C_BANCO, operadora, recibido, enviado);
-- The direct transfers by date. Not a filtered index: that would bind every
-- client's inserts and updates to SET options that the ODBC link need not use.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name LIKE N'movimientos[_]directos%')
    CREATE INDEX movimientos_directos ON dbo.MOVIMIENTOS (tipo_operacion, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado);
