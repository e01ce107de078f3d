-- Tests the registration of the language server for Neovim 0.11 and later, whose two functions are replaced here.
-- Usage: nvim --headless -u NONE --cmd 'set rtp^=editors/vim,editors/nvim' -S THIS
local calls = {}
vim.lsp.config = function(name, options) table.insert(calls, { 'config', name, options.cmd[1] }) end
vim.lsp.enable = function(name) table.insert(calls, { 'enable', name }) end

local ok, problem = pcall(function()
  require('rtifed').setup()
  require('rtifed').setup({ cmd = { '/opt/rtifed', 'lsp' } })
  local expected = { { 'enable', 'rtifed' }, { 'config', 'rtifed', '/opt/rtifed' }, { 'enable', 'rtifed' } }
  assert(vim.deep_equal(calls, expected), vim.inspect(calls))

  -- Neovim reads this file itself.
  vim.g.rtifed_program = '/usr/local/bin/rtifed'
  local config = dofile(vim.api.nvim_get_runtime_file('lsp/rtifed.lua', false)[1])
  assert(vim.deep_equal(config.cmd, { '/usr/local/bin/rtifed', 'lsp' }), vim.inspect(config.cmd))
  assert(vim.deep_equal(config.filetypes, { 'fed' }), vim.inspect(config.filetypes))
end)
if not ok then io.stderr:write('FAILED: ' .. problem .. '\n') end
vim.cmd(ok and '0cquit!' or '1cquit!')
