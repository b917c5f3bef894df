[36m[40mlqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqk
x[39m                                                                              [36mx
x[39m                                                                              [36mx
x[39m                                                                              [36mx
x[39m                                                                              [36mx
x       Colqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqk         x
x         x  Authentication Required[39m                                 [36mx         x
x       Lax[39m                                                          [36mx         x
x         [37m[46mlqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqk[36m[40m         x
x       2 [37m[46mx  Authentication failed[39m                                   [37mx[36m[40m         x
x       12[37m[46mx[39m                                                          [37mx[36m[40m         x
x         [37m[46mx  [32mInvalid login or password.[39m                            [37m  x[36m[40m         x
x         [37m[46mx[39m                                                          [37mx[36m[40m         x
x       To[37m[43mx[39m                                                          [37mx[36m[40m         x
x       ht[37m[43mx [39m                                              [30m<Enter> [36mOK[37m x[36m[40m         x
x       ht[37m[43mmqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqj[36m[40m         x
x       htx[39m                                 [36m<Enter> OK  <Esc> Cancel x         x
x       htmqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqj         x
x       https://[2001:db8:20::40]/ (STATIC)[39m                                    [36mx
x[39m                                                                              [36mx
x[39m                                                                              [36mx
x[39m                                                                              [36mx
x <F2> Customize System/View Logs[39m                      [36m<F12> Shut Down/Restart x
mqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqj
69,15 0
