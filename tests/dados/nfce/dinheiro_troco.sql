-- 2 x 21.15 paid 50.00 in cash, walk-in customer.
INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, nomecliente)
    VALUES (1234, 77, '2026-11-15', '10:20:30', 42.30, 50, 1, 'CONSUMIDOR FINAL');
INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal)
    VALUES (1234, 77, 1, 1, 2, 21.15, 42.30);
