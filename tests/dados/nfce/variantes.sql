-- Every payment form (56.00 for 51.00), a surcharge of 1.00, a CSOSN 300 item, a customer
-- with a zeroed document, and a contingency period for the main window's generator.
INSERT INTO vendas (nfce, cupom, data, hora, valor, Acrescimo, cliente, nomecliente, cgc,
                    Dinheiro, Cheque, CartaoCred, CartaoDeb, Vale, Outros, pix, alimentacao,
                    credloja)
    VALUES (1234, 77, '2026-11-14', '23:59:58', 51, 1, 25, 'Maria D''Ávila',
            '00000000000000', 20, 5, 4, 3, 2, 1, 6, 7, 8);
INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) VALUES
    (1234, 77, 1, 1, 1, 30, 30),
    (1234, 77, 2, 7, 2, 10, 20);
INSERT INTO nfce (dataentrada, horaentrada) VALUES ('13/11/2026', '08:00:00');
