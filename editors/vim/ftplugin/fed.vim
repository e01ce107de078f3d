" Vim filetype plugin
" Language: FED (Federation Execution Data) of HLA 1.3

if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1
let s:save_cpo = &cpo
set cpo&vim

setlocal comments=:;;,:; commentstring=;;\ %s formatoptions-=t formatoptions+=croql
setlocal expandtab shiftwidth=2 softtabstop=2
setlocal suffixesadd=.fed
let b:undo_ftplugin = 'setlocal comments< commentstring< formatoptions< expandtab< shiftwidth< softtabstop< suffixesadd<'

if !exists('current_compiler')
  compiler rtifed
  let b:undo_ftplugin .= ' makeprg< errorformat<'
endif

if get(g:, 'fed_folding', 0)
  setlocal foldmethod=expr foldexpr=fed#Fold(v:lnum)
  let b:undo_ftplugin .= ' foldmethod< foldexpr<'
endif

command! -buffer -bar FedFormat call fed#Rewrite('fmt')
command! -buffer -bar FedFix call fed#Rewrite('fix')
command! -buffer -bar -nargs=? FedTree call fed#Show('tree', <q-args>)
let b:undo_ftplugin .= ' | delcommand FedFormat | delcommand FedFix | delcommand FedTree'

let &cpo = s:save_cpo
unlet s:save_cpo
