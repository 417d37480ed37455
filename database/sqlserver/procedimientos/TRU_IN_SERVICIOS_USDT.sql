-- A new USDT row: the code after the largest while within 100, else the lowest
-- free code from 1; prices and div 0; the equivalence as a whole number.
CREATE PROCEDURE dbo.TRU_IN_SERVICIOS_USDT
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
