-- The banks behind the Zelle wallet, by rising code.
CREATE PROCEDURE dbo.TRU_BANCOS_ZELLE
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_Banco, D_banco FROM dbo.bancos_zelle ORDER BY C_Banco;
END
