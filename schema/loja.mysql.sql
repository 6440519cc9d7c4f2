-- The shop's database (MySQL / MariaDB).
-- Flags are TINYINT(1) with 0 as default; columns that statements compare with '' or 0
-- are NOT NULL with that default. Money DECIMAL(15,2), unit prices and costs (15,4).

CREATE TABLE IF NOT EXISTS vendas (
    id INT NOT NULL AUTO_INCREMENT,
    data DATE NULL,
    hora TIME NULL,
    cupom INT NOT NULL DEFAULT 0,
    nfce INT NOT NULL DEFAULT 0,
    loja INT NOT NULL DEFAULT 0,
    caixa INT NOT NULL DEFAULT 0,
    ccf INT NOT NULL DEFAULT 0,
    serie VARCHAR(20) NOT NULL DEFAULT '',
    operador VARCHAR(20) NOT NULL DEFAULT '',
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente INT NOT NULL DEFAULT 0,
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    cgc VARCHAR(20) NOT NULL DEFAULT '',
    forpag INT NOT NULL DEFAULT 0,
    valor DECIMAL(15,2) NOT NULL DEFAULT 0,
    Desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    Acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    Dinheiro DECIMAL(15,2) NOT NULL DEFAULT 0,
    Cheque DECIMAL(15,2) NOT NULL DEFAULT 0,
    CartaoDeb DECIMAL(15,2) NOT NULL DEFAULT 0,
    CartaoCred DECIMAL(15,2) NOT NULL DEFAULT 0,
    Outros DECIMAL(15,2) NOT NULL DEFAULT 0,
    Vale DECIMAL(15,2) NOT NULL DEFAULT 0,
    pix DECIMAL(15,2) NOT NULL DEFAULT 0,
    alimentacao DECIMAL(15,2) NOT NULL DEFAULT 0,
    credloja DECIMAL(15,2) NOT NULL DEFAULT 0,
    situacao VARCHAR(1) NOT NULL DEFAULT 'N',
    chave VARCHAR(44) NOT NULL DEFAULT '',
    autorizacao VARCHAR(60) NOT NULL DEFAULT '',
    erro TEXT NULL,
    tempo VARCHAR(10) NOT NULL DEFAULT '',
    enviotime TINYINT NOT NULL DEFAULT 0,
    lote VARCHAR(20) NOT NULL DEFAULT '',
    xml VARCHAR(1) NOT NULL DEFAULT '',
    xml_info LONGTEXT NULL,
    sync TINYINT(1) NOT NULL DEFAULT 0,
    exportado TINYINT(1) NOT NULL DEFAULT 0,
    PRIMARY KEY (id),
    -- pending sales: enviotime = 0 ordered by cupom; re-queuing: enviotime = 1, tempo <> '1'
    KEY vendas_envio (enviotime, cupom),
    KEY vendas_reenvio (enviotime, tempo),
    KEY vendas_nfce (nfce),
    KEY vendas_cupom (cupom),
    KEY vendas_chave (chave),
    KEY vendas_data (data),
    KEY vendas_exportado (exportado, data, cupom)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS itens (
    id INT NOT NULL AUTO_INCREMENT,
    data DATE NULL,
    hora TIME NULL,
    cupom INT NOT NULL DEFAULT 0,
    nfce INT NOT NULL DEFAULT 0,
    Item INT NOT NULL DEFAULT 0,
    loja INT NOT NULL DEFAULT 0,
    caixa INT NOT NULL DEFAULT 0,
    ccf INT NOT NULL DEFAULT 0,
    serie VARCHAR(20) NOT NULL DEFAULT '',
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente INT NOT NULL DEFAULT 0,
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    forpag INT NOT NULL DEFAULT 0,
    codprod INT NOT NULL DEFAULT 0,
    nomeprod VARCHAR(120) NOT NULL DEFAULT '',
    quant DECIMAL(15,3) NOT NULL DEFAULT 0,
    valor DECIMAL(15,4) NOT NULL DEFAULT 0,
    valortotal DECIMAL(15,2) NOT NULL DEFAULT 0,
    custo DECIMAL(15,4) NOT NULL DEFAULT 0,
    Acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    Desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    icms VARCHAR(10) NOT NULL DEFAULT '',
    trib VARCHAR(10) NOT NULL DEFAULT '',
    situacao VARCHAR(1) NOT NULL DEFAULT 'N',
    sync TINYINT(1) NOT NULL DEFAULT 0,
    exportado TINYINT(1) NOT NULL DEFAULT 0,
    PRIMARY KEY (id),
    KEY itens_nfce (nfce, situacao),
    KEY itens_cupom (cupom, Item),
    KEY itens_item (Item),
    KEY itens_exportado (exportado, data, cupom)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS produtos (
    codigo INT NOT NULL,
    nome VARCHAR(120) NOT NULL DEFAULT '',
    ncm VARCHAR(10) NOT NULL DEFAULT '',
    cest VARCHAR(10) NOT NULL DEFAULT '',
    cfop VARCHAR(5) NOT NULL DEFAULT '',
    unidade VARCHAR(6) NOT NULL DEFAULT '',
    CST INT NOT NULL DEFAULT 0,
    icms INT NOT NULL DEFAULT 0,
    reducao_base DECIMAL(15,4) NOT NULL DEFAULT 0,
    estoque DECIMAL(15,3) NOT NULL DEFAULT 0,
    estoquefisico DECIMAL(15,3) NOT NULL DEFAULT 0,
    PRIMARY KEY (codigo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS clientes (
    codigo INT NOT NULL,
    nome VARCHAR(100) NOT NULL DEFAULT '',
    cgc VARCHAR(20) NOT NULL DEFAULT '',
    PRIMARY KEY (codigo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS empresa (
    id INT NOT NULL AUTO_INCREMENT,
    mens1 VARCHAR(200) NOT NULL DEFAULT '',
    mens2 VARCHAR(200) NOT NULL DEFAULT '',
    pathenvio VARCHAR(255) NOT NULL DEFAULT '',
    PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS caixas (
    id INT NOT NULL AUTO_INCREMENT,
    nome VARCHAR(60) NOT NULL DEFAULT '',
    PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS forpag (
    codigo INT NOT NULL,
    nome VARCHAR(60) NOT NULL DEFAULT '',
    plano VARCHAR(10) NOT NULL DEFAULT '',
    parc1 INT NOT NULL DEFAULT 0,
    PRIMARY KEY (codigo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE IF NOT EXISTS orcamento (
    cupom INT NOT NULL,
    autorizacao VARCHAR(60) NOT NULL DEFAULT '',
    tempo VARCHAR(10) NOT NULL DEFAULT '',
    emitido VARCHAR(1) NOT NULL DEFAULT '',
    cupomnfce INT NOT NULL DEFAULT 0,
    chave VARCHAR(44) NOT NULL DEFAULT '',
    PRIMARY KEY (cupom)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Contingency periods; dates "dd/mm/yyyy" and times "HH:MM:SS" are kept as text.
CREATE TABLE IF NOT EXISTS nfce (
    id INT NOT NULL AUTO_INCREMENT,
    dataentrada VARCHAR(10) NOT NULL DEFAULT '',
    datasaida VARCHAR(10) NOT NULL DEFAULT '',
    horaentrada VARCHAR(8) NOT NULL DEFAULT '',
    horasaida VARCHAR(8) NOT NULL DEFAULT '',
    PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
