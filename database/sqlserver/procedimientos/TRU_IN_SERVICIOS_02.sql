-- A new service: the code after the largest while within 100, else the lowest
-- free code from 1; percentage with a decimal comma; the letter as a capital.
CREATE PROCEDURE dbo.TRU_IN_SERVICIOS_02
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
