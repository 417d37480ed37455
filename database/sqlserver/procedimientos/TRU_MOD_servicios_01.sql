-- A service's description, percentage (decimal comma) and decimals; way of
-- calculation, letter and status only when sent.
CREATE PROCEDURE dbo.TRU_MOD_servicios_01
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
