-- The client catalogue, by rising code (so that a new client comes last).
-- Service 0 lists every client; any other service lists the clients with at
-- least one transaction of that service in their whole history.
--@param @servicio INTEGER = 0
SELECT C_CLIENTE, D_cliente, Revisar
FROM clientes AS c
WHERE COALESCE(@servicio, 0) = 0
   OR EXISTS (SELECT 1 FROM MOVIMIENTOS AS m
              WHERE m.C_CLIENTE = c.C_CLIENTE AND m.tipo_servicio = @servicio)
ORDER BY C_CLIENTE;
