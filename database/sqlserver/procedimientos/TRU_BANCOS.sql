-- The banks through which payments leave, by rising code.
CREATE PROCEDURE dbo.TRU_BANCOS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_Banco, D_banco FROM dbo.bancos ORDER BY C_Banco;
END
