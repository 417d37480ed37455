-- Control de Pagos: the database on SQL Server.
--
-- Creates the database RAMIL (if missing) with the tables of the system, the
-- procedures of the program with their helper functions, and the rows the program
-- reads without looking (parameters, the one-row dollar tables, the two USDT
-- reference prices, Zelle bank 0, the four wallets and the two pictures of
-- fotos). It can be run again: what exists is kept, the procedures are replaced.
--
-- Run it as an administrator of the server, with sqlcmd:
--     sqlcmd -S servidor,1433 -U sa -P "clave" -i despliegue.sql
-- or with FreeTDS's tsql (each batch ends with "go"):
--     tsql -H servidor -p 1433 -U sa -P "clave" < despliegue.sql
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
BEGIN
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
    CREATE INDEX movimientos_fecha_pago ON dbo.MOVIMIENTOS (fecha_pago);
    CREATE INDEX movimientos_cliente ON dbo.MOVIMIENTOS (C_CLIENTE, FECHA);
    CREATE INDEX movimientos_proveedor ON dbo.MOVIMIENTOS (C_PROVEEDOR, FECHA);
END
go

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
BEGIN
    CREATE TABLE dbo.clientes (
        C_CLIENTE int NOT NULL PRIMARY KEY,
        D_cliente varchar(60) NOT NULL DEFAULT '',
        Revisar   varchar(10) NOT NULL DEFAULT ''
    );
    CREATE INDEX clientes_nombre ON dbo.clientes (D_cliente);
END
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
go

-- Two counters entering on one date may hold the same sequence: each entry
-- screen takes its number when it prepares. The entry that comes second is
-- not refused but stored under the next free sequence of its date, and so is
-- a row that repeats the key of another row of the same insert; the moved
-- rows take the numbers above the date's last one, in the order of their
-- sequences. A row whose key is free goes in as it is; the sequences of other
-- dates are not read.
-- Locking: the last sequence of each date is read first, with UPDLOCK and
-- HOLDLOCK (key-range locks at the end of the date's keys on the primary key,
-- held to the end of the insert). Every insert on a date takes that lock
-- before any other on the date's keys, so a second counter waits for the
-- first instead of taking the same number, and two inserts cannot each hold
-- a key the other needs (no deadlock). The insert made here does not fire
-- this trigger again: an INSTEAD OF trigger is not re-entered by a statement
-- on its own table.
CREATE OR ALTER TRIGGER dbo.TRU_MOVIMIENTOS_Secuencia ON dbo.MOVIMIENTOS
INSTEAD OF INSERT
AS
BEGIN
    SET NOCOUNT ON;
    IF NOT EXISTS (SELECT 1 FROM inserted)
        RETURN;
    -- The last sequence of each date, in the table or in this insert.
    DECLARE @ultimas TABLE (FECHA varchar(8) COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY, ultima int NOT NULL);
    INSERT INTO @ultimas (FECHA, ultima)
    SELECT d.FECHA, CASE WHEN t.s > d.s THEN t.s ELSE d.s END
    FROM (SELECT FECHA, MAX(SECUENCIA) AS s FROM inserted GROUP BY FECHA) AS d
    CROSS APPLY (SELECT COALESCE(MAX(m.SECUENCIA), 0) AS s
                 FROM dbo.MOVIMIENTOS AS m WITH (UPDLOCK, HOLDLOCK)
                 WHERE m.FECHA = d.FECHA) AS t;
    WITH entrada AS (
        -- vez: 1 for the first row of the insert with its key, 2 and on for its repeats
        SELECT i.*, ROW_NUMBER() OVER (PARTITION BY i.FECHA, i.SECUENCIA ORDER BY (SELECT NULL)) AS vez
        FROM inserted AS i
    ), marcada AS (
        SELECT e.*,
               CASE WHEN e.vez > 1
                      OR EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS AS m WITH (UPDLOCK, HOLDLOCK)
                                 WHERE m.FECHA = e.FECHA AND m.SECUENCIA = e.SECUENCIA)
                    THEN 1 ELSE 0 END AS mover
        FROM entrada AS e
    )
    INSERT INTO dbo.MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago,
                                 C_BANCO, REFERENCIA, confirmacion, operadora, tipo_operacion,
                                 tipo_servicio, reservado1, reservado2, reservado3, reservado4,
                                 reservado5, ganancia, obs, g1, g2, g3, fecha_pago, hora_pago,
                                 dolar1, dolar2, bancozelle)
    SELECT k.FECHA,
           CASE WHEN k.mover = 0 THEN k.SECUENCIA
                ELSE u.ultima + ROW_NUMBER() OVER (PARTITION BY k.FECHA, k.mover ORDER BY k.SECUENCIA, k.vez)
           END,
           k.C_CLIENTE, k.enviado, k.recibido, k.C_PROVEEDOR, k.pago, k.C_BANCO, k.REFERENCIA,
           k.confirmacion, k.operadora, k.tipo_operacion, k.tipo_servicio, k.reservado1,
           k.reservado2, k.reservado3, k.reservado4, k.reservado5, k.ganancia, k.obs, k.g1, k.g2,
           k.g3, k.fecha_pago, k.hora_pago, k.dolar1, k.dolar2, k.bancozelle
    FROM marcada AS k
    JOIN @ultimas AS u ON u.FECHA = k.FECHA;
END
go

-- The rows that the program reads without looking. The access code '0000'
-- is a placeholder: set the business's own with
--     UPDATE parametros SET Clave = '....'
IF NOT EXISTS (SELECT 1 FROM dbo.parametros)
    INSERT INTO dbo.parametros (Clave, Fecha, Fecha_Compraventas, Dolar) VALUES ('0000', GETDATE(), GETDATE(), 0);
IF NOT EXISTS (SELECT 1 FROM dbo.dolar)
    INSERT INTO dbo.dolar (Fecha, valor) VALUES (GETDATE(), 0);
IF NOT EXISTS (SELECT 1 FROM dbo.dolar_NEW)
    INSERT INTO dbo.dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON) VALUES (GETDATE(), 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.servicios_usdt WHERE C_SERVIcio = 1)
    INSERT INTO dbo.servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES (1, 'DOLAR REFERENCIA', 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.servicios_usdt WHERE C_SERVIcio = 2)
    INSERT INTO dbo.servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES (2, 'USDT BASE', 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.bancos_zelle WHERE C_Banco = 0)
    INSERT INTO dbo.bancos_zelle (C_Banco, D_banco) VALUES (0, 'NINGUNO');
-- The entry screen starts on the letter T of TRUMIN.
IF NOT EXISTS (SELECT 1 FROM dbo.servicios)
    INSERT INTO dbo.servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO) VALUES
        (1, 'TRUMIN', 9, 2, 1, 'T', 'A', 0), (2, 'ZELLE', 6, 2, 1, 'Z', 'A', 0),
        (3, 'ZINLI', 4, 2, 1, 'I', 'A', 0), (4, 'AMAZON', 15, 2, 1, 'A', 'A', 0);
go

-- The pictures of fotos rows 0 (no photo) and 9999 (client under review).
IF NOT EXISTS (SELECT 1 FROM dbo.fotos WHERE cliente = 0)
    INSERT INTO dbo.fotos (cliente, img) VALUES (0, 0x89504E470D0A1A0A0000000D49484452000000F00000012C0803000000CA00CE400000001E504C5445E6E6E6EAEAEAE1E1E1CFCFCFB0B0B09A9A9A93\
93937A7A7AFEFEFE858585B3DDD7410000075F4944415478DAED9D8B96A4280C40E521ADFFFFC32DE0032DB590222160EEEC999976D82AAF8180A8D8\
750CC3300CC3300CC3300CC3300CC3300CC3300CC3300CC3300CC3300CC3300CC3304C468428BD0778C840B8716D31C94AA994D6BD436BAD94B28740\
6C87A221ACAAF534D3AF19E3FE3669CBE684A572AAE7D8ED4ACA668485B3FD22EC9C4BEF691E5DA5AF443FD0B2FE34A662656754E91DC6D5AD5C5926\
E85A2AADD84227FA4E6DB9C2218948A9CD35D7EBF4F02E41AEAA934A6DBDBB965C5A225A764ACED13DEF7DB5AE63F025E56FCD3730AEC2F7F7E6BBA1\
4BABC420F3F95661FC43EF7B6A4CBE56E7F5251FE3CCF175C6A4E7BF72E5E710CA832E08DFDE28AADDB1CC31BE3A3326EADB7530BE13344F9E0012D6\
02CD54FDBC01C78FB829262EA0063C43B019C355680BBD11176C8009CE7301FBF63D31E1A88CF5705A605F9C56DE12E0019E3A6342FC38451907A910\
275B3CA9E5A5253750024CAA2F8EBF3EF80B740698D07DB0C5500A719E69E8EF90495B38BA3D99B48551A33D34EE0341CAD11622751ACD97489DC6AB\
D134F234D4D41D5D61BC264CA41123FA9268C498359A8630D230CB43A023964F27327E132EAD8B9BB32864ADD70903CF471F297F4E0C784589A670D6\
D98E888F2AAD8B3CEEA010615CE1D7459885D1C1B8C8424AF85B84738F3B4BEBF2C0A37DE1D78DA5DF268C3A87F742E1F21300AF9BC493596FF9AF40\
F885F3D298C2149A30D0C4F4F9909484F0EBAE1E22D669124D18F50E80D2AA33AF1346BB8B87C0952547F2F5B487FF1F11DD0E6B12A0FCB9F00A4E9E\
2692A32D38337984EE89C7B95F9A90304ACF545A710F7C8809B560C7937D4FEAC54855E8EE85CF2D01CF4F13EA8317D2431C53C3E90CB23620F316B5\
8CE579DBF3C3B9F2D6490DA758A1331A57E30BD58C6936603863DA6B2E01ACD4525A09D998BAEF8571F2A4177DDFBC31AEC1D78EAA73CD6256E1DBE5\
9BB6A5DC1FEDC87305D554E39BE73E08BA6B2C9DF3FBCAA595F1F3DAB4D4663822F861F5E1CAAAB347A4AF2F5D7AD7D379D90AE229CAB4AE2F24203A\
A54DEC40445799AB8EC2DB7B1EBE0557925EB3F31993B3393B6932CBEFAAF2A6FB8958DED5F229AC64FD35F98AC97A7D1B4F6FDFC64363690E48847B\
DF906DDAEEF7D675176B31BBBF8BD709330CC3300CC3300CC3300CC3300CC3300C16F3B587F7CCC5CFAAAD0A4B7B41544A7FED70BD7AD86B7BFDD05D\
40148D5D553BBD36EC2F109BF9660732CFBBFFCCE41A7B8F87BDDB5F545DCD95EA1FDD1D6E6ABD29CD2255EAAD78BAC6FB3D926D17E77A023D753859\
D6D8D2E49EA0BD22DFC34B1554EDD89BD02231D46FCD93F1B719C60993CEDA12E829712D683A032E8E4730654BE0852DC8DD550CBF8818AD202786F7\
51822354AF15D2EB5A8818E3ADE469483CCCF4B6C578719797B6E9BA68BE465E30DD52B25A0BE415F167E372D51AB7F96E143296B86F4B0B28F4A42D\
76BA0A2931D22CE95B626AE0E88B5DBDB18DCBC6D71B23B664E4D7775C18230A53F0C5EC9D4AF5BF07D07A2722BE1348539AA8E3C9DBEC8F31AE16A0\
E70B4F3B3704E3F8046D0E7F8200DD1D4B420DD8039CB8905F3644C098460F1C023BFE403F23FCFE7DA0BD31F65B1DE3D4013BE3B40A0D5D2BE03235\
BD8CE581BA55A0C014651C50C30FAA01869AF12999B1BE0013E2CB8C556AF2320024C4545BB03BDE9801FE7D6F330030FAA01A604FFE564C37457BB2\
F7C5B4039C3DC482709F3493B915D33B2D3C9279445D5A2782AC8D987ACAB2644D5B4F6B7489C157D63A5D60FF9FF3B21A9D354FD3CFD1968C759AFA\
A8C3A373642DFF1928FB1B95E86E0B1D84CFABF8DFCB60E1D661E1D661E1D661E1D661E1D661E1EFF44A0EC3E01E031FDD063DD89FD7BF0DD2971BD7\
CD1BBEC0820C3F534C85A536F306317CB02BDA6D45818547F5B1C747E1A17F28DCCB6D9B32B7C26151396208CBE1BBB07C26BCDFE80FD785F0595158\
E1E51BC59DB0DF111329BC6E5B24CDA9B0F8F4F54561855D8095AB4BF6A2ECB6C75DB8EFF256588C7FCBAFA5220C839E7E306A559BFED1FEE70FDF52\
36283A6E456185C5EE5BCC45845D882FABF47E9B0A2BA7FF00BDFCDBB80FE35D5128E1B3C37A222CE2857DAA0A0FE896BD0FC2BBA2E3BE289470E7BE\
65972CC683B0123E0C71C2FD3EFBF843B6A4DFBDF06D5128E1A553B20F497F5A7861ED9BF4F7A4D5AF5BD6026627B5173E18F64969EBA9F01826D9B0\
3505C2AEB2E9886EA95F8EA0387CFEB9F06D5128E13FD3057BAC4E85DD1F2232C26A4DF18185DEFD742BFC346B250C2D7530F6B05F371EBA25ED538F\
6E24C28E7E91DE34C308FB105FF7C353076B090EC1F6C9F16DD8200AAFC7DB7DFDA7B00F7113597A63BC12D67F870EF956F8B67325D00FABF5008F6B\
5D3C89F03A163E13DE7F27F191563708E54E838DDC6B1E84FBE808DF0D900FC227C3EEC767882963E9613BB1D157C263172B7C770A74103E9CAB25A4\
AC64E15DFCCE8497104708DF9DE41E840F4505E2F9B0C34F398C2749EB6F1E754709FFF5E2F89933C7084F4583718F4C99E4799EA5A73ED8CD6949B5\
EB1FB71E794EA37DBCF0C99CD695F0655138E1CA61E1D661E1D661E1D661E1D661E1D661E1D661E1D661E1D6F907D42D983562924F73000000004945\
4E44AE426082);
go
IF NOT EXISTS (SELECT 1 FROM dbo.fotos WHERE cliente = 9999)
    INSERT INTO dbo.fotos (cliente, img) VALUES (9999, 0x89504E470D0A1A0A0000000D49484452000000F00000012C0803000000CA00CE400000001B504C5445C8102DD02F26FED300DE611AF3AC09E47516D6\
4521EA8A11DC591CE100BA2E00000B494944415478DAED9D8BB6A32A0C40A5A2F8FF5F3C531FC853931082C792BBD65D1D2B219BC410D07A86A14B97\
2E5DBA74E9D2A54B972E5DBA5417A51EAFFFF363D281DF2E1DF8EDD281DF2E1DF8EDD281DF2E1DF8EDD281DF2ECD80C71F03D683FE2DE0665B0F8DBA\
9DFE034F3F04ACD7DDA52641DD06785E81E79F01D6FB06620B1737016EB965DAA2CFC90237C85B4D06F914F9A06E003C3BC0F2794B1ED878373EC45D\
2C0FDCF8568F788753002C9DB7A481F530B475B1747F73042C9CB7848163070F83793370FB5BD4B2BD8D4960D1BC253CBCED9F4210EDCCABB11AE52D\
49602F6379DE16CC5B92C02EE2E85FCFAF049E02C236794B726C8335836EE262B99EDC47CAE6E8887A1D70C29F3AF4F9AB80FD8CB5498BBC25D54F9A\
AD41DE121BD864F436086A21E05C5D255F6FC9009BAC27C55D2C039CBF56BDA1780DF0744195CADE7F1DD84B4DE6EA4B81A09600BECE4CC2794B00F8\
A6661676B100F05D75315D0FC89F03BEE711ADB7AA0303225634A8AB03437292029CF3678041DE1374716D60D8F52998B72AAB87568E72F556EDF104\
C6AA5C495D573BBC8A12ABB7AA021BA8833F7279AB2A30A6A290DADFAAA91BC720546F551D4C54940AD55B1581DD3C04D96797C95BF580D177522EF7\
09FE0030FE9A14A9B7AA29A6582F91B76A0193E253E27E622DBDD88C55D2EA09C0445F094C4D9580A95763FDBC55472BDDEEEA79ABD2309223B37ADE\
AAA2B4648FAA76DEAA015C967A2AE7AD1AC065D761E5BC554165A9C5754B6A7EE0E23540DDFD2D7E8DE5AB3C5703FB16263B30C7BC5233A8D981EF32\
D69A78B53E3E25A566DEE2D6777701C27EC553D1C5EC037863AA0101575C443003DFD64921B0B9D7C3BBBFC50B7C3FA3C03C5CD1C5BCC0F728400FD7\
CB5BACCA0056023D5CEF7E22EFE8DDC721D4C3D5829A1318F2843BFCC7A5959E83600406D558E090AEB54E6404065D75E090AE753F914F13CC3E8487\
EBEC6F310E1D2802111EAEB34E645304FC4D0EC6C355EA2D2E60E8AA10055C236F71018332D6279E96AED74215EA2D263560CB701EAE90B77880E165\
112669A114CB02C3B30BD2C3FC798B0518B18F85056677310B3034637DD021CD9FB73874600A04AC87D9F31603302AEAF0AFE2C13CBF28038CCA2BE8\
90E6CE5BE5C0380FE0439A79D3B61CB8204081C0AC79AB5801D21A4248F396D4E5238633267CDD12C87ECEE7204ADB639F50200173E6ADE201C38E7D\
000CEB85B1DE2A04C6E61FEA3B00F9F256596BC2268CFF27B1C0CFE9E047B6063025D2160F187C41B2E5ADA2C6945CE2BF346DA9DA17373069D4FD89\
185E38713D2F5F024C32810ACCB5695BD094983909D370DC909EB7E8C0D418A3CC4AABF0B898DE929A45C8C03CCF9D9281C9EB72FA6BC358EA2D3230\
396916CC2F1CF713A9EDE817945B79C0A7E1DDDAF2BC45042E98154D81D10C414D042E884B431EAAB27E8B804B2A5B5D025CBEF9410376BB95FDC349\
C5EB445223D9B7E7040617E62DDA281545659994E62D0A70DBBF4C51D83B0198F9DE07560A5D4C006698FD8BA42C83E05B942D5AB472655694145034\
E268930B771E48771EAE4CA80E5C983328F796222979EEB4A44EA264780E0F17CD8B58A34BBDC3E2E192BC853CBDB8C6E2012E1877ECF8944EC13C21\
5D3055D077956835169387E99648EF1B3279989EB7507633B886CBC3E46C823997630F8D0D983AFAA8C1610845DCE3C3E0A1AB02CCB22AE4F330D11E\
3830CF1D5A4660DA1C0937DD554FDFC762CBD21F62DE029FC8F42B2217581502937C00B55DE6FD6D48A1E42DE879026FBA2208216F511E946A8DE99A\
8F8E3BA0F54F0CE8AFE0F316EC2CF1BFB70116F414877F5EB0C91FB3CF0AFA5A039D24F90E77AC60B32904B8F1CEFBB560F7E521C05CA5601D415644\
80531AFD4546B0E0EA2DC8983C744A3A0497B7EECF687BAF1022280B6F819F5A63791088BC75CBF0EC8CB50926CBA07E2BD81A2C4F01F7CA1D844244\
4B3B414CC637C0CFCF589BC06BC16BE047D7583E07D4D001ACE6A9196B1370DE82BF92A135D28D407D3340953C3AA03FF0BC7505EC662CBC28E0698A\
458D2F3309D850BA7A88680A706BA38B84003C96F7DA500C1EB8B5C98582062ECB58ED654102FFE58CB589C601B736974150C07FDFC1B9BC951B8737\
0802782AEF4D48AE0AB1190EFC62E9C06F970EFC76E9C06F970EFC76E9C06F970EFC76E9C06F970EFC76E9C06F970EFC76E9C06F970E0C173DCDDF6D\
70B5ECF734B6DB33DE0D0E7D1E0ADFB3EC7C6FDBA8FD1FA9DD7593D620076CA267C1740C6C60C0C7A3FBC7D94F045EE2CE13C0771E3696E61658B705\
56913924E0E3A07ABA8777FFAA49FF9749C18147638CFEFF9F319E87F756C7476DD653B65ED6CFDA1C1A16B31F203E9C4F02DEC7DA3E55A0E7D3FAEB\
6BD824151DEE0A4E196DF07C32FAA580179FD7B3FEDAC359609305BED22F059CBE86AE814D1E7839B43D1578B33DBADD8C9A968CD364FDFF14032F29\
E040832070D4212A4B4FCEF7DB03079FBB6BF8A1C0537CC809E9C05CB323AD09FC2EA4CDD38051A5A51BD2FB33251A740D0731D2121892B4C67D0ED5\
EEF77AF3ED0CBA86C77D22977CBFB406272DD8B4740C87BEF670C379383D2D650B8FE906F8EBAC6F353943925613E039E96282878D1DB933233DD1C3\
7BFAB0BF5DCD96964EE236D71E3E170C0F2C3CECB3C56AFCBF7630FEE2E15BDC1BBD2F0F528B876DEDE04E4BEE20DE028FAE7E31E0E8696ACFE45DF4\
E5F2D039B8A95411F075A5457D43240D38DC00383DEC1974B1E3E11CD41E0FB4F0907D477CB0C5B3640C728093E6BA1E3EA2060C2CEBE1CFBA89B75E\
C8C7265EC287B090F6AA108763BA0E69610FFF55E9C06F970EFC76E9C06F970EFC76E9C0ABF83FD47256BBC7A27FAD29FD3667A9ABE649C747F7268B\
ADBD3739EE091B57A51ED75FCACF5691F13BDCBE77FB59CF5056F1F773FAFD6969E0C84C3B06CECA465DB5393607A2A10B4D3FEAE5C9391EBF2EC51F\
0E67DDB268BFA3BC7D0860C7C37BFFF7C007713C74FE0A613C1CEE20A9B0893F1C4147DA3B9AB78FE8E15D7F42E176C2F9D286DCD08DEEA571E29FC0\
4713E5009BE0E3E0FCEA507BA16472F65D021F03AA834383FB7443CAC3DF637A71ECD88FEA4DD7B94F1036723ECD67A89A4985C0FB22F1BB4FA6C721\
1E87AC7DF71E56F1213B84AED1711B67A8A758933ABFDD52D8E49F185CE4811A6FEF763C7BB2C942533C9C00B60AE78CC21058E734B9317D9E693CE0\
216BD0705CF4E7E07917C216645C1E5EF601D560E084879D9876DA9C27AE10B3BF9F317928E766C7B929B2AA9A2FECBB07B67286CC628633D5668147\
E75B5F933EDDB22A9D6D4487CDBFD68FC607539FCCB68F3EBE182FEC43009F21377E365BF3D3D23C6F795AE994266737DA5E1971EC3BD3920A0B8F31\
E8D9AA8DEDC3FC243E01BC8DE056D024157A25868DC894872DE749EEC5BE5B58ECF3B9055E6E8077173384F4AE701D7E7357789C7F192C097C5C6A6E\
BEF6D2869953BD5B0FA76EBFDCDA7709BC0FF777F6F45C35ED356B4AA15F444E6EB36D46F7EBDEC30FF18CBCFFFB803E73F06C073000D60E70D6BE7B\
0F27B2F437BEBE4398C8BD279A77D7734A76BD993939119DEAD271A755632CA11340F68CC3BE9113D89BF0926D94F3AD4976BDD51B6E44A747C6D2F9\
6549300FCF20FB2E8113BDDB11B44954E5DAB8F735D31EDE86C18BCE7364169B00CEDCE87CEBC64F58695DD90703D61FEF1A1EEDA72BE02D297945F0\
5E48DB50B479788C9BABEF6DD895F7D413D5D2EBCDD8A896F6EF7121808315983F8287B5F94A2B7F0FED38D9BE9D4CC7CD836769834A3B7E4D9053D2\
2D17F6DD7BD857797AF8E8320FECB838D0E407ABAB23282DAD44CBC3CCF35A8E7D3A695F8187F71D897C483BB934BD5AB754A3DF653C4673620DE216\
26B3D7FECABE12609DBA463C9B6CF6CC84F4715C279B6BB315A86AD129E5D93D2DDF3E0CF08BA503BF5D3AF0DBA503BF5D7E0958FF1AF0A703FF823C\
1D98FDD5F443972E5DBA74E9D2A54B972E5DBA74E9320CFF00BFE4C1B73D8D4D570000000049454E44AE426082);
go

-- The business's parameters in one row, also from an empty table, with no
-- null; the moments as dd/mm/yyyy hh:mm:ss text.
CREATE OR ALTER PROCEDURE dbo.TRU_PARAMETROS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(p.Clave, '') AS Clave,
           COALESCE(CONVERT(varchar(10), p.Fecha, 103) + ' ' + CONVERT(varchar(8), p.Fecha, 108), '') AS Fecha,
           COALESCE(CONVERT(varchar(10), p.Fecha_Compraventas, 103) + ' ' + CONVERT(varchar(8), p.Fecha_Compraventas, 108), '')
               AS Fecha_Compraventas,
           COALESCE(p.Dolar, 0) AS Dolar
    FROM (SELECT 1 AS uno) AS u
    LEFT JOIN (SELECT TOP 1 Clave, Fecha, Fecha_Compraventas, Dolar FROM dbo.parametros) AS p ON 1 = 1;
END
go

-- The program's whole reference cache: nine result sets in a fixed order, each
-- delivered also when empty. 1 banks, 2 clients, 3 providers, 4 concepts,
-- 5 the wallet prices of the day (stepped over by the program), 6 services by
-- rising code (the last code read is the program's count), 7 the rate of each
-- service, 8 USDT prices, 9 Zelle banks. No column the program reads is null.
CREATE OR ALTER PROCEDURE dbo.TRU_CARGA_TABLAS_03
AS
BEGIN
    SET NOCOUNT ON;
    -- bank codes in the four digits the transactions store ('0134')
    SELECT CASE WHEN C_Banco BETWEEN 0 AND 9999 THEN RIGHT('0000' + CAST(C_Banco AS varchar(10)), 4)
                ELSE CAST(C_Banco AS varchar(10)) END AS C_Banco,
           COALESCE(D_banco, '') AS D_banco
    FROM dbo.bancos ORDER BY C_Banco;
    SELECT C_CLIENTE, COALESCE(D_cliente, '') AS D_cliente, COALESCE(Revisar, '') AS Revisar
    FROM dbo.clientes ORDER BY C_CLIENTE;
    SELECT C_proveedor, COALESCE(D_proveedor, '') AS D_proveedor, COALESCE(porgan, 0) AS porgan,
           COALESCE(Comision, 0) AS Comision
    FROM dbo.proveedor ORDER BY C_proveedor;
    SELECT C_CONCEPTO, COALESCE(D_CONCEPTO, '') AS D_CONCEPTO FROM dbo.conceptos ORDER BY C_CONCEPTO;
    SELECT Fecha, TRUMIN, ZELLE, ZINLI, AMAZON FROM dbo.dolar_NEW;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(porcentaje, 0) AS porcentaje,
           COALESCE(decimales, 0) AS decimales, COALESCE(letra, '') AS letra
    FROM dbo.servicios ORDER BY C_SERVIcio;
    SELECT C_SERVIcio, COALESCE(MONTO, 0) AS MONTO FROM dbo.servicios ORDER BY C_SERVIcio;
    SELECT COALESCE(equivalencia, 0) AS equivalencia, C_SERVIcio, COALESCE(compra, 0) AS compra,
           COALESCE(div, 0) AS div
    FROM dbo.servicios_usdt ORDER BY C_SERVIcio;
    SELECT C_Banco, COALESCE(D_banco, '') AS D_banco FROM dbo.bancos_zelle ORDER BY C_Banco;
END
go

-- Every client, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_CLIENTES
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar FROM dbo.clientes ORDER BY C_CLIENTE;
END
go

-- Clients found by any part of the name (capitals and accents or not), or by their code
-- when the text is all digits; an empty text lists every client. The text is
-- taken literally.
CREATE OR ALTER PROCEDURE dbo.TRU_Busca_CLIENTES
    @texto varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar
    FROM dbo.clientes
    WHERE @texto = ''
       OR CHARINDEX(@texto COLLATE Latin1_General_CI_AI, D_cliente COLLATE Latin1_General_CI_AI) > 0
       OR (@texto NOT LIKE '%[^0-9]%' AND LEN(@texto) <= 9 AND C_CLIENTE = CAST(@texto AS int))
    ORDER BY D_cliente, C_CLIENTE;
END
go

-- A new client under the next free code; the new client comes back as one row.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_CLIENTES_01
    @nombre varchar(40) = ''
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = COALESCE(MAX(C_CLIENTE), 0) + 1 FROM dbo.clientes WITH (UPDLOCK, HOLDLOCK);
    INSERT INTO dbo.clientes (C_CLIENTE, D_cliente, Revisar) VALUES (@codigo, @nombre, '');
    COMMIT TRANSACTION;
    SELECT C_CLIENTE, D_cliente FROM dbo.clientes WHERE C_CLIENTE = @codigo;
END
go

-- Every provider, by rising code, with the percentages and the gift balance.
CREATE OR ALTER PROCEDURE dbo.TRU_proveedor
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_proveedor, D_proveedor, clave_pro, porgan, Comision, regalo AS Regalo, ultregalo
    FROM dbo.proveedor ORDER BY C_proveedor;
END
go

-- The last sequence used on a date (0 for a day without transactions), then
-- how many transactions the day has.
CREATE OR ALTER PROCEDURE dbo.TRU_Prepara
    @fecha varchar(8) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(MAX(SECUENCIA), 0) AS secuenciA FROM dbo.MOVIMIENTOS WHERE FECHA = @fecha;
    SELECT COUNT(*) AS cuantas FROM dbo.MOVIMIENTOS WHERE FECHA = @fecha;
END
go

-- What a client has used, most used service first; then his review mark as
-- Ruta, one row also for an unknown client.
CREATE OR ALTER PROCEDURE dbo.TRU_Cuenta_servicios
    @cliente varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(s.D_SERVIcio, 'SERVICIO ' + CAST(m.tipo_servicio AS varchar(10))) AS Servicio, COUNT(*) AS cuantos
    FROM dbo.MOVIMIENTOS AS m
    LEFT JOIN dbo.servicios AS s ON s.C_SERVIcio = m.tipo_servicio
    WHERE m.C_CLIENTE = TRY_CAST(@cliente AS int)
    GROUP BY m.tipo_servicio, s.D_SERVIcio
    ORDER BY cuantos DESC, m.tipo_servicio;
    SELECT COALESCE((SELECT Revisar FROM dbo.clientes WHERE C_CLIENTE = TRY_CAST(@cliente AS int)), '') AS Ruta;
END
go

-- An amount written the business's way, as some procedures receive it: with a
-- ',' the last ',' is the decimal mark and every other mark a thousands mark
-- ("1,234,50" is 1234.5); without one, a single '.' is a decimal point and
-- several are thousands marks. Blank is 0; other text is a conversion error.
CREATE OR ALTER FUNCTION dbo.num_coma (@texto varchar(60))
RETURNS float
AS
BEGIN
    DECLARE @t varchar(60) = LTRIM(RTRIM(@texto));
    IF @t IS NULL RETURN NULL;
    IF @t = '' RETURN 0;
    DECLARE @p int = CHARINDEX(',', REVERSE(@t));
    IF @p > 0
        SET @t = REPLACE(REPLACE(LEFT(@t, LEN(@t) - @p), '.', ''), ',', '') + '.' + RIGHT(@t, @p - 1);
    ELSE IF LEN(@t) - LEN(REPLACE(@t, '.', '')) > 1
        SET @t = REPLACE(@t, '.', '');
    RETURN CAST(@t AS float);
END
go

-- The banks through which payments leave, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_BANCOS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_Banco, D_banco FROM dbo.bancos ORDER BY C_Banco;
END
go

-- A bank with the operator's code and name; an empty code (0) takes the next
-- code above the largest; an existing code keeps its key and takes the name.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_BANCOS
    @codigo int = 0,
    @descripcion varchar(60) = ''
AS
BEGIN
    SET NOCOUNT ON;
    BEGIN TRANSACTION;
    IF COALESCE(@codigo, 0) = 0
        SELECT @codigo = COALESCE(MAX(C_Banco), 0) + 1 FROM dbo.bancos WITH (UPDLOCK, HOLDLOCK);
    IF EXISTS (SELECT 1 FROM dbo.bancos WITH (UPDLOCK, HOLDLOCK) WHERE C_Banco = @codigo)
        UPDATE dbo.bancos SET D_banco = @descripcion WHERE C_Banco = @codigo;
    ELSE
        INSERT INTO dbo.bancos (C_Banco, D_banco) VALUES (@codigo, @descripcion);
    COMMIT TRANSACTION;
END
go

-- The banks behind the Zelle wallet, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_BANCOS_ZELLE
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_Banco, D_banco FROM dbo.bancos_zelle ORDER BY C_Banco;
END
go

-- A Zelle bank's new name; the code never changes.
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_bancos_zelle
    @codigo int = 0,
    @descripcion varchar(60) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.bancos_zelle SET D_banco = @descripcion WHERE C_Banco = @codigo;
END
go

-- The client catalogue by rising code: every client for service 0, else the
-- clients with a transaction of that service.
CREATE OR ALTER PROCEDURE dbo.TRU_CLIENTES_01
    @servicio smallint = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar
    FROM dbo.clientes AS c
    WHERE COALESCE(@servicio, 0) = 0
       OR EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS AS m
                  WHERE m.C_CLIENTE = c.C_CLIENTE AND m.tipo_servicio = @servicio)
    ORDER BY C_CLIENTE;
END
go

-- A client's new name and review mark ('9999': under review).
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_CLIENTES
    @codigo int = 0,
    @nombre varchar(40) = '',
    @revisar varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.clientes SET D_cliente = @nombre, Revisar = @revisar WHERE C_CLIENTE = @codigo;
END
go

-- A client's photograph; storing another replaces it.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_FOTOS
    @cliente int = 0,
    @img varbinary(max) = NULL
AS
BEGIN
    SET NOCOUNT ON;
    BEGIN TRANSACTION;
    IF EXISTS (SELECT 1 FROM dbo.fotos WITH (UPDLOCK, HOLDLOCK) WHERE cliente = @cliente)
        UPDATE dbo.fotos SET img = @img WHERE cliente = @cliente;
    ELSE
        INSERT INTO dbo.fotos (cliente, img) VALUES (@cliente, @img);
    COMMIT TRANSACTION;
END
go

-- A new provider under the next code, with its name and group key.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_proveedor_01
    @nombre varchar(30) = '',
    @clave varchar(5) = ''
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = COALESCE(MAX(C_proveedor), 0) + 1 FROM dbo.proveedor WITH (UPDLOCK, HOLDLOCK);
    INSERT INTO dbo.proveedor (C_proveedor, D_proveedor, clave_pro) VALUES (@codigo, @nombre, @clave);
    COMMIT TRANSACTION;
END
go

-- A provider's name, group key, share of the gain, commission and gift
-- balance; the numbers come with a decimal comma, maybe with thousands marks.
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_proveedor_01
    @codigo int = 0,
    @nombre varchar(30) = '',
    @clave varchar(5) = '',
    @porgan varchar(30) = '0',
    @comision varchar(30) = '0',
    @regalo varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.proveedor
    SET D_proveedor = @nombre, clave_pro = @clave, porgan = dbo.num_coma(@porgan),
        Comision = dbo.num_coma(@comision), regalo = dbo.num_coma(@regalo)
    WHERE C_proveedor = @codigo;
END
go

-- The payment concepts of the receipts, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_CONCEPTOS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos ORDER BY C_CONCEPTO;
END
go

-- A new payment concept under the next code.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_CONCEPTOS
    @descripcion varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = COALESCE(MAX(C_CONCEPTO), 0) + 1 FROM dbo.conceptos WITH (UPDLOCK, HOLDLOCK);
    INSERT INTO dbo.conceptos (C_CONCEPTO, D_CONCEPTO) VALUES (@codigo, @descripcion);
    COMMIT TRANSACTION;
END
go

-- A payment concept's new description.
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_Conceptos
    @codigo int = 0,
    @descripcion varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.conceptos SET D_CONCEPTO = @descripcion WHERE C_CONCEPTO = @codigo;
END
go

-- The wallet services, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_servicios
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio
    FROM dbo.servicios ORDER BY C_SERVIcio;
END
go

-- A new service: the code after the largest while within 100, else the lowest
-- free code from 1; percentage with a decimal comma; the letter as a capital.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_SERVICIOS_02
    @descripcion varchar(60) = '',
    @porcentaje varchar(30) = '0',
    @decimales int = 2,
    @sw_calculos int = 1,
    @letra varchar(5) = ''
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = MAX(C_SERVIcio) + 1 FROM dbo.servicios WITH (UPDLOCK, HOLDLOCK);
    IF @codigo IS NULL OR @codigo > 100
        SELECT @codigo = MIN(n.c)
        FROM (SELECT TOP (100) ROW_NUMBER() OVER (ORDER BY (SELECT NULL)) AS c FROM sys.all_objects) AS n
        WHERE n.c NOT IN (SELECT C_SERVIcio FROM dbo.servicios);
    INSERT INTO dbo.servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO)
    VALUES (@codigo, @descripcion, dbo.num_coma(@porcentaje), COALESCE(@decimales, 2), COALESCE(@sw_calculos, 1),
            UPPER(LEFT(LTRIM(RTRIM(@letra)), 1)), 'A', 0);
    COMMIT TRANSACTION;
END
go

-- A service's description, percentage (decimal comma) and decimals; way of
-- calculation, letter and status only when sent.
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_servicios_01
    @codigo int = 0,
    @descripcion varchar(60) = '',
    @porcentaje varchar(30) = '0',
    @decimales int = 2,
    @sw_calculos int = NULL,
    @letra varchar(5) = NULL,
    @estado varchar(10) = NULL
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.servicios
    SET D_SERVIcio = @descripcion, porcentaje = dbo.num_coma(@porcentaje),
        decimales = COALESCE(@decimales, decimales), sw_calculos = COALESCE(@sw_calculos, sw_calculos),
        letra = COALESCE(UPPER(LEFT(LTRIM(RTRIM(@letra)), 1)), letra),
        St_servicio = COALESCE(@estado, St_servicio)
    WHERE C_SERVIcio = @codigo;
END
GO

-- The rates. Amounts that arrive with a decimal comma are read by num_coma.
-- The services with their stored rate, for the rate panel, by rising code.
CREATE OR ALTER PROCEDURE dbo.TRU_dolares
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(MONTO, 0) AS MONTO,
           COALESCE(porcentaje, 0) AS porcentaje, COALESCE(sw_calculos, 0) AS sw_calculos
    FROM dbo.servicios ORDER BY C_SERVIcio;
END
GO

-- The plain dollar screen's one price (decimal point) and the moment of the
-- store; the one row is made when missing.
CREATE OR ALTER PROCEDURE dbo.TRU_UPDATE_DOLAR
    @fecha datetime = NULL,
    @valor varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.dolar SET Fecha = COALESCE(@fecha, GETDATE()), valor = dbo.num_coma(@valor);
    IF NOT EXISTS (SELECT 1 FROM dbo.dolar)
        INSERT INTO dbo.dolar (Fecha, valor) VALUES (COALESCE(@fecha, GETDATE()), dbo.num_coma(@valor));
END
GO

-- The four wallet prices of the day (decimal comma) and the moment of the
-- store; the one row is made when missing.
CREATE OR ALTER PROCEDURE dbo.TRU_UPDATE_DOLAR_01
    @fecha datetime = NULL,
    @trumin varchar(30) = '0',
    @zelle varchar(30) = '0',
    @zinli varchar(30) = '0',
    @amazon varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.dolar_NEW
    SET Fecha = COALESCE(@fecha, GETDATE()), TRUMIN = dbo.num_coma(@trumin), ZELLE = dbo.num_coma(@zelle),
        ZINLI = dbo.num_coma(@zinli), AMAZON = dbo.num_coma(@amazon);
    IF NOT EXISTS (SELECT 1 FROM dbo.dolar_NEW)
        INSERT INTO dbo.dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON)
        VALUES (COALESCE(@fecha, GETDATE()), dbo.num_coma(@trumin), dbo.num_coma(@zelle), dbo.num_coma(@zinli),
                dbo.num_coma(@amazon));
END
GO

-- The new rate of one service (decimal comma); an empty amount keeps the rate.
CREATE OR ALTER PROCEDURE dbo.TRU_UPDATE_DOLAR_02
    @codigo int = 0,
    @monto varchar(30) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.servicios SET MONTO = dbo.num_coma(@monto)
    WHERE C_SERVIcio = @codigo AND LTRIM(RTRIM(COALESCE(@monto, ''))) <> '';
END
GO

-- The day's dollar; it stamps the moment of the last update of the rates.
CREATE OR ALTER PROCEDURE dbo.TRU_UPDATE_DOLAR_03
    @dolar varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.parametros SET Dolar = dbo.num_coma(@dolar), Fecha = GETDATE();
    IF NOT EXISTS (SELECT 1 FROM dbo.parametros)
        INSERT INTO dbo.parametros (Clave, Fecha, Fecha_Compraventas, Dolar)
        VALUES ('', GETDATE(), NULL, dbo.num_coma(@dolar));
END
GO

-- The USDT prices by rising code: rows 1 and 2 are the references.
CREATE OR ALTER PROCEDURE dbo.TRU_servicios_USDT
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(compra, 0) AS compra,
           COALESCE(venta, 0) AS venta, COALESCE(equivalencia, 0) AS equivalencia, COALESCE(div, 0) AS div
    FROM dbo.servicios_usdt ORDER BY C_SERVIcio;
END
GO

-- A new USDT row: the code after the largest while within 100, else the lowest
-- free code from 1; prices and div 0; the equivalence as a whole number.
CREATE OR ALTER PROCEDURE dbo.TRU_IN_SERVICIOS_USDT
    @descripcion varchar(60) = '',
    @equivalencia float = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = MAX(C_SERVIcio) + 1 FROM dbo.servicios_usdt WITH (UPDLOCK, HOLDLOCK);
    IF @codigo IS NULL OR @codigo > 100
        SELECT @codigo = MIN(n.c)
        FROM (SELECT TOP (100) ROW_NUMBER() OVER (ORDER BY (SELECT NULL)) AS c FROM sys.all_objects) AS n
        WHERE n.c NOT IN (SELECT C_SERVIcio FROM dbo.servicios_usdt);
    INSERT INTO dbo.servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
    VALUES (@codigo, UPPER(@descripcion), 0, 0, CAST(COALESCE(@equivalencia, 0) AS int), 0);
    COMMIT TRANSACTION;
END
GO

-- A USDT row's description and prices (decimal comma) and, when sent, its
-- divide flag. A price change stamps the moment of the last price update.
CREATE OR ALTER PROCEDURE dbo.TRU_MOD_servicios_USDT
    @codigo int = 0,
    @descripcion varchar(60) = '',
    @compra varchar(30) = '0',
    @venta varchar(30) = '0',
    @div int = NULL
AS
BEGIN
    SET NOCOUNT ON;
    IF EXISTS (SELECT 1 FROM dbo.servicios_usdt
               WHERE C_SERVIcio = @codigo
                 AND (compra <> dbo.num_coma(@compra) OR venta <> dbo.num_coma(@venta)))
        UPDATE dbo.parametros SET Fecha_Compraventas = GETDATE();
    UPDATE dbo.servicios_usdt
    SET D_SERVIcio = @descripcion, compra = dbo.num_coma(@compra), venta = dbo.num_coma(@venta),
        div = COALESCE(@div, div)
    WHERE C_SERVIcio = @codigo;
END
GO

-- The providers' notifications, newest first; those of one moment by provider
-- and title. The moment as dd/mm/yyyy hh:mm:ss.
CREATE OR ALTER PROCEDURE dbo.Ramil_lista_Notificaciones
AS
BEGIN
    SET NOCOUNT ON;
    SELECT n.Codigo_proveedor, n.Nombre, n.titulo, n.mensaje,
           CONVERT(varchar(10), n.Fecha, 103) + ' ' + CONVERT(varchar(8), n.Fecha, 108) AS Fecha, n.tipo, n.leida
    FROM dbo.notificaciones AS n ORDER BY n.Fecha DESC, n.Codigo_proveedor, n.titulo;
END
GO

-- The console queries. Filters: dates compared as text ('202301' means "since
-- January 2023"); payment 0 all, 1 paid (a bank in C_BANCO, '7777' included),
-- 2 not paid; operator 0 all, else that operator; each text given found in
-- the client's name, the reference or the note, capitals and accents or not
-- ("pena" finds "PEÑA"); service 0 all, 98 and 99 the
-- services of sw_calculos 1 and 2, else that service. The filters but the
-- dates are the same for the three queries: this function holds them.
CREATE OR ALTER FUNCTION dbo.TRU_Filtra_Consola
    (@pago smallint, @operadora smallint, @texto1 varchar(100), @texto2 varchar(100), @servicio int)
RETURNS TABLE
AS RETURN
    SELECT m.*, COALESCE(c.D_cliente, '') AS Cliente
    FROM dbo.MOVIMIENTOS AS m
    LEFT JOIN dbo.clientes AS c ON c.C_CLIENTE = m.C_CLIENTE
    WHERE (@pago = 0 OR (@pago = 1 AND LTRIM(RTRIM(m.C_BANCO)) <> '') OR (@pago = 2 AND LTRIM(RTRIM(m.C_BANCO)) = ''))
      AND (@operadora = 0 OR LTRIM(RTRIM(m.operadora)) = CAST(@operadora AS varchar(6)))
      AND (@texto1 = '' OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, COALESCE(c.D_cliente, '') COLLATE Latin1_General_CI_AI) > 0
           OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, m.REFERENCIA COLLATE Latin1_General_CI_AI) > 0 OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, m.obs COLLATE Latin1_General_CI_AI) > 0)
      AND (@texto2 = '' OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, COALESCE(c.D_cliente, '') COLLATE Latin1_General_CI_AI) > 0
           OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, m.REFERENCIA COLLATE Latin1_General_CI_AI) > 0 OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, m.obs COLLATE Latin1_General_CI_AI) > 0)
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND m.tipo_servicio IN (SELECT C_SERVIcio FROM dbo.servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND m.tipo_servicio = @servicio));
go

-- By the day of the transaction; rows by date, then sequence.
CREATE OR ALTER PROCEDURE dbo.TRU_CONSULTA_1127
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, Cliente, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, bancozelle, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia, g1 AS G1,
           g2 AS G2, g3 AS G3, fecha_pago, hora_pago, dolar1, dolar2
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE FECHA >= @desde AND FECHA <= @hasta
    ORDER BY FECHA, SECUENCIA;
END
go

-- By the day of payment; rows by day and hour of payment. Only paid rows
-- (with a bank): a row taken back to unpaid keeps its old day of payment.
CREATE OR ALTER PROCEDURE dbo.TRU_CONSULTA_PAGO_250320
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, Cliente, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, bancozelle, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia, g1 AS G1,
           g2 AS G2, g3 AS G3, fecha_pago, hora_pago
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE fecha_pago <> '' AND fecha_pago >= @desde AND fecha_pago <= @hasta AND LTRIM(RTRIM(C_BANCO)) <> ''
    ORDER BY fecha_pago, hora_pago, FECHA, SECUENCIA;
END
go

-- The USDT transactions (services from 50 up), by the day of the transaction.
CREATE OR ALTER PROCEDURE dbo.TRU_CONSULTA_USDT
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE FECHA >= @desde AND FECHA <= @hasta AND tipo_servicio >= 50
    ORDER BY FECHA, SECUENCIA;
END
go

-- The program's login (user "TRUMIN"; the password is the deployment's own):
--     CREATE LOGIN TRUMIN WITH PASSWORD = '<password of the deployment>', DEFAULT_DATABASE = RAMIL;
--     CREATE USER TRUMIN FOR LOGIN TRUMIN;
--     ALTER ROLE db_datareader ADD MEMBER TRUMIN;
--     ALTER ROLE db_datawriter ADD MEMBER TRUMIN;
--     GRANT EXECUTE TO TRUMIN;

-- ---------------------------------------------------------------------------
-- Statistics: the month by day, the year by month, and their USDT forms.
-- ---------------------------------------------------------------------------

-- The rows that the statistics read walk these indexes alone (the table's
-- columns that they filter on or add up are carried in them). The indexes by
-- client and by provider of older databases are widened once.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name = N'movimientos_estadistica')
    CREATE INDEX movimientos_estadistica ON dbo.MOVIMIENTOS (FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, tipo_operacion, recibido, enviado, g2);
IF NOT EXISTS (SELECT 1 FROM sys.indexes AS i JOIN sys.index_columns AS c
                   ON c.object_id = i.object_id AND c.index_id = i.index_id AND c.is_included_column = 1
               WHERE i.object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND i.name = N'movimientos_cliente')
    CREATE INDEX movimientos_cliente ON dbo.MOVIMIENTOS (C_CLIENTE, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado) WITH (DROP_EXISTING = ON);
IF NOT EXISTS (SELECT 1 FROM sys.indexes AS i JOIN sys.index_columns AS c
                   ON c.object_id = i.object_id AND c.index_id = i.index_id AND c.is_included_column = 1
               WHERE i.object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND i.name = N'movimientos_proveedor')
    CREATE INDEX movimientos_proveedor ON dbo.MOVIMIENTOS (C_PROVEEDOR, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado) WITH (DROP_EXISTING = ON);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name = N'movimientos_banco')
    CREATE INDEX movimientos_banco ON dbo.MOVIMIENTOS (C_BANCO, FECHA)
        INCLUDE (operadora, tipo_servicio, recibido, enviado);
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name = N'movimientos_servicio')
    CREATE INDEX movimientos_servicio ON dbo.MOVIMIENTOS (tipo_servicio, FECHA)
        INCLUDE (C_BANCO, operadora, recibido, enviado);
-- The direct transfers by date. Not a filtered index: that would bind every
-- client's inserts and updates to SET options that the ODBC link need not use.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND name = N'movimientos_directos')
    CREATE INDEX movimientos_directos ON dbo.MOVIMIENTOS (tipo_operacion, FECHA)
        INCLUDE (C_BANCO, operadora, tipo_servicio, recibido, enviado);
go

-- The rows of a period that the statistics add up, with the money of each
-- (recibido, or on the USDT screens enviado) and the business's gain (g2 of a
-- paid row, 0 while unpaid). Returned rows (bank '7777', as the console stores
-- a return) are left out. Operator
-- 0 all, 1 or 2. Service: 0 all, 98 and 99 the services of sw_calculos 1 and
-- 2, any other that code; on the USDT screens only codes from 50, and every
-- value but 0 is that code alone.
CREATE OR ALTER FUNCTION dbo.TRU_Filtra_Estadistica
    (@desde varchar(12), @hasta varchar(12), @operadora smallint, @servicio int, @usdt bit)
RETURNS TABLE
AS RETURN
    SELECT FECHA, C_PROVEEDOR, C_CLIENTE, C_BANCO, tipo_servicio, tipo_operacion,
           CASE WHEN @usdt = 1 THEN enviado ELSE recibido END AS monto,
           CASE WHEN LTRIM(RTRIM(C_BANCO)) <> '' THEN g2 ELSE 0 END AS gan
    FROM dbo.MOVIMIENTOS
    WHERE FECHA >= @desde AND FECHA <= @hasta AND C_BANCO <> '7777'
      AND (@operadora = 0 OR LTRIM(RTRIM(operadora)) = CAST(@operadora AS varchar(6)))
      AND ((@usdt = 0
            AND (@servicio = 0
                 OR (@servicio IN (98, 99)
                     AND tipo_servicio IN (SELECT C_SERVIcio FROM dbo.servicios WHERE sw_calculos = @servicio - 97))
                 OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
           OR (@usdt = 1 AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio)));
go

-- One month (yyyymm, as typed) day by day: six sets, in this order, each also
-- when empty: 1 by day, received, transactions, percentage and amount of the
-- gain; 2 by provider; 3 by client, with the transactions; 4 by paying bank;
-- 5 by day, the rows paid by direct transfer (type of operation 3); 6 by
-- service. The sets by code come with the largest amount first.
CREATE OR ALTER PROCEDURE dbo.TRU_NewCalk_02_250320
    @mes varchar(10) = '', @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @desde varchar(12) = @mes + '01', @hasta varchar(12) = @mes + '31';
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY FECHA ORDER BY FECHA;
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma, COUNT(*) AS cuantos
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY C_BANCO ORDER BY Suma DESC, Banco;
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE tipo_operacion = 3 AND LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY FECHA ORDER BY FECHA;
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
END
go

-- The same month of the USDT services: the money sent, no count by client.
CREATE OR ALTER PROCEDURE dbo.TRU_NewCalk_02_USDT
    @mes varchar(10) = '', @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @desde varchar(12) = @mes + '01', @hasta varchar(12) = @mes + '31';
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY FECHA ORDER BY FECHA;
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY C_BANCO ORDER BY Suma DESC, Banco;
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE tipo_operacion = 3 AND LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY FECHA ORDER BY FECHA;
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
END
go

-- One year (as typed) month by month: first the twelve months as yyyymm
-- (Fecha), then the six sets of TRU_NewCalk_02_250320 by month.
CREATE OR ALTER PROCEDURE dbo.TRU_NewCalk_03_250320
    @ano varchar(10) = '', @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @desde varchar(14) = @ano + '0101', @hasta varchar(14) = @ano + '1231';
    SELECT COALESCE(TRY_CAST(@ano AS int), 0) * 100 + n AS Fecha
    FROM (VALUES (1), (2), (3), (4), (5), (6), (7), (8), (9), (10), (11), (12)) AS meses (n)
    ORDER BY n;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma, COUNT(*) AS cuantos
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY C_BANCO ORDER BY Suma DESC, Banco;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE tipo_operacion = 3 AND LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
END
go

-- The last twelve months of the USDT services, ending with the current one:
-- first those months as yyyymm (fech), then the six sets by month, the money
-- sent, no count by client.
CREATE OR ALTER PROCEDURE dbo.TRU_NewCalk_03_USDT
    @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @hoy date = CAST(GETDATE() AS date);
    DECLARE @primero date = DATEADD(month, -11, DATEFROMPARTS(YEAR(@hoy), MONTH(@hoy), 1));
    DECLARE @desde varchar(8) = CONVERT(varchar(8), @primero, 112),
            @hasta varchar(8) = CONVERT(varchar(6), @hoy, 112) + '31';
    SELECT CAST(CONVERT(varchar(6), DATEADD(month, n, @primero), 112) AS int) AS fech
    FROM (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9), (10), (11)) AS meses (n)
    ORDER BY n;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY C_BANCO ORDER BY Suma DESC, Banco;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE tipo_operacion = 3 AND LTRIM(RTRIM(C_BANCO)) <> ''
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
END
go
