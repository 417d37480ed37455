-- The service of the statistics: 0 all, 98 every service with sw_calculos 1,
-- 99 every one with sw_calculos 2, any other that service code
-- (TRU_Filtra_Estadistica on SQL Server).
AND (@servicio = 0
     OR (@servicio IN (98, 99)
         AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
     OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio))
