" Tests of the Vim files, also in Neovim. Usage: vim -es -u NONE --cmd 'set rtp^=editors/vim' -S THIS
" in the folder of the repository, with rtifed in $PATH. Prints what failed; exits with 1 then.
set nocompatible nomore shellpipe=>%s\ 2>&1
filetype plugin indent on
let s:work = tempname()
call mkdir(s:work)

function! s:Open(name, lines) abort
  call writefile(a:lines, s:work . '/' . a:name)
  execute 'edit!' fnameescape(s:work . '/' . a:name)
endfunction

function! Test_make_fills_the_quickfix_list() abort
  call s:Open('a wrong one.fed', readfile('examples/minimal.fed') + ['(class "Späher" x'])
  silent make!
  let l:found = filter(getqflist(), 'v:val.valid')
  call assert_equal(1, len(l:found))
  let l:line = line('$')
  call assert_equal([bufnr('%'), l:line, 1, 'e'],
        \ [l:found[0].bufnr, l:found[0].lnum, l:found[0].col, tolower(l:found[0].type)])
  call assert_match('\[text-behind-end\]$', l:found[0].text)
endfunction

" A formatted file that lost its indentation gets the same one again.
function! Test_indentation_is_that_of_fmt() abort
  call s:Open('indent.fed', systemlist('rtifed fmt examples/harbour.fed'))
  let l:formatted = getline(1, '$')
  silent %s/^\s\+//
  normal! gg=G
  call assert_equal(l:formatted, getline(1, '$'))
endfunction

function! Test_typing_indents() abort
  call s:Open('typed.fed', ['(FED', '  (objects (class "a(b"  ;; (', '    )', '  )'])
  normal! 2Go(attribute x reliable receive)
  call assert_equal('    (attribute x reliable receive)', getline(3))
  normal! 5Go)
  call assert_equal([')'], getline(6, 6))
endfunction

function! Test_folds_are_clauses() abort
  let g:fed_folding = 1
  call s:Open('folds.fed', ['(FED', '  (objects', '    (class A', '      (attribute "x)" reliable receive)  ;; )', '    )', '  ))'])
  call assert_equal([1, 2, 3, 3, 3, 2], map(range(1, 6), 'foldlevel(v:val)'))
  unlet g:fed_folding
endfunction

function! Test_commands_rewrite_the_text() abort
  call s:Open('format.fed', ['(fed (federation a)', '(fedversion v)', '', '', ')'])
  FedFormat
  call assert_equal(['(FED', '  (Federation a)', '  (FEDversion v)', ')'], getline(1, '$'))
  undo
  call assert_equal('(fed (federation a)', getline(1))
  call s:Open('unbalanced.fed', ['(FED (Federation a)'])
  FedFormat
  call assert_equal(['(FED (Federation a)'], getline(1, '$'))
  call s:Open('fix.fed', readfile('examples/minimal.fed'))
  silent %s/Delete reliable timestamp/Delete reliable time_stamp/
  silent FedFix
  call assert_true(readfile('examples/minimal.fed') ==# getline(1, '$'))
  edit! examples/minimal.fed
  FedTree Manager.Federation
  call assert_match('FederationName', join(getline(1, '$'), "\n"))
  close!
endfunction

function! Test_comments() abort
  call s:Open('comments.fed', [';; one'])
  call assert_equal(';; %s', &commentstring)
  normal! otwo
  call assert_equal(';; two', getline(2))
endfunction

let s:failed = 0
for s:test in sort(filter(split(execute('function /^Test_'), "\n"), 'v:val =~# "Test_"'))
  let s:name = matchstr(s:test, 'Test_\w*')
  let v:errors = []
  try
    call call(s:name, [])
  catch
    call add(v:errors, v:throwpoint . ': ' . v:exception)
  endtry
  for s:error in v:errors
    let s:failed = 1
    call writefile(['FAILED: ' . s:name . ': ' . s:error], '/dev/stderr', 'a')
  endfor
endfor
call delete(s:work, 'rf')
execute s:failed ? 'cquit!' : 'qall!'
