-- Every provider, by rising code, with the percentages and the gift balance.
CREATE PROCEDURE dbo.TRU_proveedor
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_proveedor, D_proveedor, clave_pro, porgan, Comision, regalo AS Regalo, ultregalo
    FROM dbo.proveedor ORDER BY C_proveedor;
END
