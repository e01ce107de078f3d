" Vim compiler file
" Compiler: rtifed check

if exists('current_compiler')
  finish
endif
let current_compiler = 'rtifed'

if exists(':CompilerSet') != 2
  command -nargs=* CompilerSet setlocal <args>
endif

execute 'CompilerSet makeprg=' . escape(fed#Program() . ' check --format concise %:S', ' \|"')
CompilerSet errorformat=%f:%l:%c:\ %trror:\ %m,%f:%l:%c:\ %tarning:\ %m
