-- The day's dollar, stored after the service rates, with a decimal comma or
-- point (read by num_coma). It stamps the moment of the last update of the
-- rates, which TRU_PARAMETROS returns as Fecha, so that the panel's label
-- tells the truth after the next load of the parameters.
--@param @dolar TEXT = '0'
UPDATE parametros SET Dolar = num_coma(@dolar), Fecha = GETDATE();
INSERT INTO parametros (Clave, Fecha, Fecha_Compraventas, Dolar)
SELECT '', GETDATE(), '', num_coma(@dolar)
WHERE NOT EXISTS (SELECT 1 FROM parametros);
