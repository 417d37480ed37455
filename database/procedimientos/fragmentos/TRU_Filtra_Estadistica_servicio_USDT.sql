-- The service of the USDT statistics: the USDT services alone (codes 50 and
-- up), 0 every one, any other value that code (TRU_Filtra_Estadistica with
-- @usdt on SQL Server).
AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio)
