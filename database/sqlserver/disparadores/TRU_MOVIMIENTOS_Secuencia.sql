-- Two counters entering on one date may hold the same sequence: each entry
-- screen takes its number when it prepares. The entry that comes second is
-- not refused but stored under the next free sequence of its date, and so is
-- a row that repeats the key of another row of the same insert; the moved
-- rows take the numbers above the date's last one, in the order of their
-- sequences. A row whose key is free goes in as it is; the sequences of other
-- dates are not read.
-- Locking: the last sequence of each date is read first, with UPDLOCK and
-- HOLDLOCK (key-range locks at the end of the date's keys on the primary key,
-- held to the end of the insert). Every insert on a date takes that lock
-- before any other on the date's keys, so a second counter waits for the
-- first instead of taking the same number, and two inserts cannot each hold
-- a key the other needs (no deadlock). The insert made here does not fire
-- this trigger again: an INSTEAD OF trigger is not re-entered by a statement
-- on its own table.
CREATE TRIGGER dbo.TRU_MOVIMIENTOS_Secuencia ON dbo.MOVIMIENTOS
INSTEAD OF INSERT
AS
BEGIN
    SET NOCOUNT ON;
    IF NOT EXISTS (SELECT 1 FROM inserted)
        RETURN;
    -- The last sequence of each date, in the table or in this insert.
    DECLARE @ultimas TABLE (FECHA varchar(8) COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY, ultima int NOT NULL);
    INSERT INTO @ultimas (FECHA, ultima)
    SELECT d.FECHA, CASE WHEN t.s > d.s THEN t.s ELSE d.s END
    FROM (SELECT FECHA, MAX(SECUENCIA) AS s FROM inserted GROUP BY FECHA) AS d
    CROSS APPLY (SELECT COALESCE(MAX(m.SECUENCIA), 0) AS s
                 FROM dbo.MOVIMIENTOS AS m WITH (UPDLOCK, HOLDLOCK)
                 WHERE m.FECHA = d.FECHA) AS t;
    WITH entrada AS (
        -- vez: 1 for the first row of the insert with its key, 2 and on for its repeats
        SELECT i.*, ROW_NUMBER() OVER (PARTITION BY i.FECHA, i.SECUENCIA ORDER BY (SELECT NULL)) AS vez
        FROM inserted AS i
    ), marcada AS (
        SELECT e.*,
               CASE WHEN e.vez > 1
                      OR EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS AS m WITH (UPDLOCK, HOLDLOCK)
                                 WHERE m.FECHA = e.FECHA AND m.SECUENCIA = e.SECUENCIA)
                    THEN 1 ELSE 0 END AS mover
        FROM entrada AS e
    )
    INSERT INTO dbo.MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago,
                                 C_BANCO, REFERENCIA, confirmacion, operadora, tipo_operacion,
                                 tipo_servicio, reservado1, reservado2, reservado3, reservado4,
                                 reservado5, ganancia, obs, g1, g2, g3, fecha_pago, hora_pago,
                                 dolar1, dolar2, bancozelle)
    SELECT k.FECHA,
           CASE WHEN k.mover = 0 THEN k.SECUENCIA
                ELSE u.ultima + ROW_NUMBER() OVER (PARTITION BY k.FECHA, k.mover ORDER BY k.SECUENCIA, k.vez)
           END,
           k.C_CLIENTE, k.enviado, k.recibido, k.C_PROVEEDOR, k.pago, k.C_BANCO, k.REFERENCIA,
           k.confirmacion, k.operadora, k.tipo_operacion, k.tipo_servicio, k.reservado1,
           k.reservado2, k.reservado3, k.reservado4, k.reservado5, k.ganancia, k.obs, k.g1, k.g2,
           k.g3, k.fecha_pago, k.hora_pago, k.dolar1, k.dolar2, k.bancozelle
    FROM marcada AS k
    JOIN @ultimas AS u ON u.FECHA = k.FECHA;
END
