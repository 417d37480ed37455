-- The rates. Amounts that arrive with a decimal comma are read by num_coma.
-- The services with their stored rate, for the rate panel, by rising code.
CREATE PROCEDURE dbo.TRU_dolares
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(MONTO, 0) AS MONTO,
           COALESCE(porcentaje, 0) AS porcentaje, COALESCE(sw_calculos, 0) AS sw_calculos
    FROM dbo.servicios ORDER BY C_SERVIcio;
END
