-- Registers the language server in any Neovim from 0.7 on: require('rtifed').setup()

local M = {}

-- Neovim before 0.11 does not read lsp/rtifed.lua itself.
local function config(options)
  local file = vim.api.nvim_get_runtime_file('lsp/rtifed.lua', false)[1]
  return vim.tbl_deep_extend('force', dofile(file), options or {})
end

-- The nearest folder above the file that has one of the markers, otherwise the folder of the file.
local function root(path, markers)
  local folder = vim.fn.fnamemodify(path, ':p:h')
  local above = folder
  while true do
    for _, marker in ipairs(markers) do
      if vim.loop.fs_stat(above .. '/' .. marker) then return above end
    end
    local parent = vim.fn.fnamemodify(above, ':h')
    if parent == above then return folder end
    above = parent
  end
end

-- Later versions of Neovim set these options themselves.
local function set_options(buffer)
  vim.bo[buffer].omnifunc = 'v:lua.vim.lsp.omnifunc'
  vim.bo[buffer].tagfunc = 'v:lua.vim.lsp.tagfunc'
  vim.bo[buffer].formatexpr = 'v:lua.vim.lsp.formatexpr()'
end

-- options: as for vim.lsp.start_client (before 0.11) or vim.lsp.config, such as cmd, on_attach and capabilities.
function M.setup(options)
  if vim.lsp.config then
    if options then vim.lsp.config('rtifed', options) end
    vim.lsp.enable('rtifed')
    return
  end
  local settings = config(options)
  local clients = {} -- the id of the client of each root folder
  vim.api.nvim_create_autocmd('FileType', {
    group = vim.api.nvim_create_augroup('rtifed', {}),
    pattern = settings.filetypes,
    callback = function(event)
      local folder = root(vim.api.nvim_buf_get_name(event.buf), settings.root_markers)
      if not clients[folder] or not vim.lsp.get_client_by_id(clients[folder]) then
        clients[folder] = vim.lsp.start_client(vim.tbl_extend('force', settings, {
          name = 'rtifed',
          root_dir = folder,
          workspace_folders = { { uri = vim.uri_from_fname(folder), name = folder } },
        }))
      end
      if clients[folder] and vim.lsp.buf_attach_client(event.buf, clients[folder]) then set_options(event.buf) end
    end,
  })
end

return M
