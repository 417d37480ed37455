-- The USDT prices by rising code: rows 1 (reference dollar) and 2 (base USDT
-- price) first, as the rate panel reads them by position.
SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(compra, 0) AS compra,
       COALESCE(venta, 0) AS venta, COALESCE(equivalencia, 0) AS equivalencia, COALESCE(div, 0) AS div
FROM servicios_usdt ORDER BY C_SERVIcio;
