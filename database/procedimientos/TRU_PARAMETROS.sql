-- The business's parameters, read at start-up and before every console query:
-- the access code, the moment the service rates and the USDT prices were last
-- stored, and the day's dollar.
-- The client reads the row without looking whether it exists, so exactly one
-- row comes back even from an empty table, with no null in it. The moments are
-- kept as 'yyyy-mm-dd hh:mm:ss' and shown the business's way, dd/mm/yyyy
-- hh:mm:ss; a text in any other form passes as it stands.
SELECT COALESCE(p.Clave, '') AS Clave,
       COALESCE(strftime('%d/%m/%Y %H:%M:%S', p.Fecha), p.Fecha, '') AS Fecha,
       COALESCE(strftime('%d/%m/%Y %H:%M:%S', p.Fecha_Compraventas), p.Fecha_Compraventas, '') AS Fecha_Compraventas,
       COALESCE(p.Dolar, 0.0) AS Dolar
FROM (SELECT 1) AS uno
LEFT JOIN (SELECT Clave, Fecha, Fecha_Compraventas, Dolar FROM parametros LIMIT 1) AS p ON 1;
