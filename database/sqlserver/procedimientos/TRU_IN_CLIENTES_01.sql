-- A new client under the next free code; the new client comes back as one row.
CREATE PROCEDURE dbo.TRU_IN_CLIENTES_01
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
