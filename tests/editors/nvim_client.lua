-- Works on a file with Neovim's language client, as its user would, and records what the client then has.
-- Usage: nvim --headless -u NONE --cmd 'set rtp^=editors/vim,editors/nvim' --cmd 'let g:session = FOLDER' -S THIS
-- FOLDER has the text as 0.fed, and gets the log and the texts after each step.

local folder = vim.g.session
local log = {}

local function note(...) table.insert(log, table.concat({ ... }, ' ')) end

local function finish(status)
  vim.fn.writefile(log, folder .. '/log')
  vim.cmd(status .. 'cquit!')
end

local function wait(what, condition)
  if not vim.wait(20000, condition, 20) then
    note('no ' .. what .. ' within 20 seconds')
    finish(1)
  end
end

local function keep(step) vim.fn.writefile(vim.api.nvim_buf_get_lines(0, 0, -1, true), folder .. '/' .. step .. '.fed') end

local function go_to(text)
  vim.api.nvim_win_set_cursor(0, { 1, 0 })
  vim.fn.search('\\V' .. text, 'W')
end

local function place()
  local cursor = vim.api.nvim_win_get_cursor(0)
  return cursor[1] .. ':' .. cursor[2] + 1
end

local function diagnostics()
  local severities = { 'error', 'warning', 'information', 'hint' }
  local lines = {}
  for _, found in ipairs(vim.diagnostic.get(0)) do
    local code = found.code or found.user_data.lsp.code
    table.insert(lines, string.format('%d:%d-%d: %s: %s [%s]: %s', found.lnum + 1, found.col + 1, found.end_col + 1,
      severities[found.severity], found.source, code, (found.message:gsub('\n.*', ''))))
  end
  return lines
end

local function run()
  require('rtifed').setup()
  vim.cmd('filetype plugin on | edit ' .. folder .. '/0.fed')

  wait('diagnostics', function() return #vim.diagnostic.get(0) > 0 end)
  for _, line in ipairs(diagnostics()) do note('diagnostic', line) end

  vim.ui.select = function(items, options, choose)
    note('action', (options.format_item(items[1])))
    choose(items[1], 1)
  end
  go_to('time_stamp')
  local before = vim.b.changedtick
  vim.lsp.buf.code_action()
  wait('fix', function() return vim.b.changedtick ~= before and #vim.diagnostic.get(0) == 0 end)
  keep(1)

  go_to('(attribute Position ')
  vim.fn.search('ApproachArea')
  local from = place()
  vim.lsp.buf.definition()
  wait('definition', function() return place() ~= from end)
  note('definition', from, '->', place())

  before = vim.b.changedtick
  vim.lsp.buf.rename('Roads')
  wait('rename', function() return vim.b.changedtick ~= before end)
  keep(2)

  vim.lsp.buf.formatting_sync(nil, 20000)
  keep(3)

  go_to('class Tanker')
  vim.fn.search('Tanker')
  local hover = vim.lsp.buf_request_sync(0, 'textDocument/hover', vim.lsp.util.make_position_params(), 20000)
  for _, answer in pairs(hover) do
    -- Eglot without a mode for Markdown asks for plain text.
    note('hover', (vim.lsp.util.convert_input_to_markdown_lines(answer.result.contents)[1]:gsub('[*`]', '')))
  end
end

local ok, problem = pcall(run)
if not ok then note('failed:', problem) end
finish(ok and 0 or 1)
