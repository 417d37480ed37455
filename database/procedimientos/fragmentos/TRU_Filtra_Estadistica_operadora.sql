-- The operator of the statistics: 0 all, 1 or 2 that operator's rows
-- (TRU_Filtra_Estadistica on SQL Server).
AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
