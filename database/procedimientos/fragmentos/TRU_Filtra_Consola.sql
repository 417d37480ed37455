-- The filters of the console queries but the dates, on MOVIMIENTOS m joined
-- with clientes c (TRU_Filtra_Consola on SQL Server): payment, operator, the
-- two texts on the client's name, the reference or the note, and the service.
  AND (@pago = 0 OR (@pago = 1 AND trim(m.C_BANCO) <> '') OR (@pago = 2 AND trim(m.C_BANCO) = ''))
  AND (@operadora = 0 OR trim(m.operadora) = CAST(@operadora AS TEXT))
  AND (@texto1 = '' OR instr(pliega(COALESCE(c.D_cliente, '')), pliega(@texto1)) > 0
       OR instr(pliega(m.REFERENCIA), pliega(@texto1)) > 0 OR instr(pliega(m.obs), pliega(@texto1)) > 0)
  AND (@texto2 = '' OR instr(pliega(COALESCE(c.D_cliente, '')), pliega(@texto2)) > 0
       OR instr(pliega(m.REFERENCIA), pliega(@texto2)) > 0 OR instr(pliega(m.obs), pliega(@texto2)) > 0)
  AND (@servicio = 0
       OR (@servicio IN (98, 99)
           AND m.tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
       OR (@servicio NOT IN (98, 99) AND m.tipo_servicio = @servicio))
