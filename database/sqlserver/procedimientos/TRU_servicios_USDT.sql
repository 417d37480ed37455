-- The USDT prices by rising code: rows 1 and 2 are the references.
CREATE PROCEDURE dbo.TRU_servicios_USDT
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(compra, 0) AS compra,
           COALESCE(venta, 0) AS venta, COALESCE(equivalencia, 0) AS equivalencia, COALESCE(div, 0) AS div
    FROM dbo.servicios_usdt ORDER BY C_SERVIcio;
END
