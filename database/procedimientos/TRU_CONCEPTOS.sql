-- The payment concepts of the receipts, by rising code.
SELECT C_CONCEPTO, D_CONCEPTO
FROM conceptos ORDER BY C_CONCEPTO;
