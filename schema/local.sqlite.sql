-- The local work list: NFC-e numbers (vendas.nfce) to send, rebuilt on every refresh.
CREATE TABLE IF NOT EXISTS ncupom (
    cupom TEXT
);
