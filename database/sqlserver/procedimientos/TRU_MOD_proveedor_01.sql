-- A provider's name, group key, share of the gain, commission and gift
-- balance; the numbers come with a decimal comma, maybe with thousands marks.
CREATE PROCEDURE dbo.TRU_MOD_proveedor_01
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
