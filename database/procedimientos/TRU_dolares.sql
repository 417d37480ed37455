-- The services with their stored rate, for the rate panel: by rising code, as
-- the panel shows them and as Precios_T is filled (100 - porcentaje by code).
SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(MONTO, 0) AS MONTO,
       COALESCE(porcentaje, 0) AS porcentaje, COALESCE(sw_calculos, 0) AS sw_calculos
FROM servicios ORDER BY C_SERVIcio;
