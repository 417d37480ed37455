-- The wallet services with their percentage, decimals, way of calculation,
-- letter and status, by rising code.
SELECT C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio
FROM servicios ORDER BY C_SERVIcio;
