-- A new provider under the next code, with its name and group key.
CREATE PROCEDURE dbo.TRU_IN_proveedor_01
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
