-- The language server for FED files. Neovim 0.11 and later find this file by its name: vim.lsp.enable('rtifed')
return {
  cmd = { vim.g.rtifed_program or 'rtifed', 'lsp' },
  filetypes = { 'fed' },
  root_markers = { '.rtifed.toml', '.git' },
}
