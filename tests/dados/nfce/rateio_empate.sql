-- A discount of 1.00 and a surcharge of 0.50 over three items of 10.00; nothing paid.
INSERT INTO vendas (nfce, cupom, data, hora, valor, Desconto, Acrescimo, cliente, nomecliente)
    VALUES (1234, 77, '2026-11-15', '10:20:30', 29.50, 1, 0.50, 1, 'CONSUMIDOR FINAL');
INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) VALUES
    (1234, 77, 1, 1, 1, 10, 10),
    (1234, 77, 2, 2, 2, 5, 10),
    (1234, 77, 3, 3, 4, 2.50, 10);
